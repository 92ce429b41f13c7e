// For the tests that paint with cairo alone. Where GDI+ is loaded too, it holds fonts of cairo's to
// the end of the process.
#include <gtest/gtest.h>

#include "stage/drawbot/overlay_painter.h"

namespace stage_test {
namespace {

/// Leaves nothing for a leak checker to find.
class FontEnvironment : public testing::Environment {
    void TearDown() override { stage::forget_fonts(); }
};
const testing::Environment *const kFontEnvironment =
    testing::AddGlobalTestEnvironment(new FontEnvironment);

}  // namespace
}  // namespace stage_test
