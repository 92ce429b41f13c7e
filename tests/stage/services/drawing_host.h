// A host with an open draw event, and its drawing suites, for tests that play the plug-in.
#pragma once

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

#include "hostapi/constants.h"
#include "hostapi/drawbot.h"
#include "hostapi/events.h"
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/services/suites/serving_host.h"

namespace stage_test {

/// References and suites are those of the open event; `list` is what is drawn.
class DrawingHost {
  public:
    DrawingHost();

    void begin(int width = 640, int height = 480);
    void end() { host.drawbot.end("PF_Cmd_EVENT"); }
    void refresh_references();

    /// Checks of the findings since the last look.
    std::vector<std::string> findings();
    /// What was drawn since the last look, a line each.
    std::vector<std::string> drawn();
    /// Checks of the findings that end the event, none left before.
    std::vector<std::string> end_findings();

    DRAWBOT_PathRef path();  ///< new, empty
    DRAWBOT_PenRef pen(DRAWBOT_ColorRGBA color = {1, 0, 0, 1}, float width = 2);
    DRAWBOT_BrushRef brush(DRAWBOT_ColorRGBA color = {0, 1, 0, 1});
    DRAWBOT_FontRef font(float size = 14);
    DRAWBOT_ImageRef image();  ///< 2 × 1 pixels
    template <class Ref>
    SPErr release(Ref reference) {
        return supplier_suite.ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(reference));
    }
    template <class Ref>
    SPErr retain(Ref reference) {
        return supplier_suite.RetainObject(reinterpret_cast<DRAWBOT_ObjectRef>(reference));
    }

    stage::ServingHost host;
    stage::DrawList list;
    PF_Context context{};
    PF_Context *context_pointer = &context;
    PF_ContextH context_handle = &context_pointer;

    const PF_EffectCustomUISuite2 &custom_ui;
    const PF_EffectCustomUIOverlayThemeSuite1 &theme_suite;
    const DRAWBOT_DrawbotSuite1 &draw_suite;
    const DRAWBOT_SupplierSuite1 &supplier_suite;
    const DRAWBOT_SurfaceSuite2 &surface_suite;
    const DRAWBOT_PathSuite1 &path_suite;
    const DRAWBOT_PenSuite1 &pen_suite;
    const DRAWBOT_ImageSuite1 &image_suite;

    DRAWBOT_DrawRef drawing = nullptr;
    DRAWBOT_SupplierRef supplier = nullptr;
    DRAWBOT_SurfaceRef surface = nullptr;

  private:
    template <class Suite>
    const Suite &suite(const char *name, int number) {
        bool refused = false;
        return *static_cast<const Suite *>(host.suites.acquire(name, number, &refused));
    }
};

/// The fixture of most tests: an event is open, and at the end everything was given back.
class DrawingTest : public testing::Test, public DrawingHost {
  protected:
    DrawingTest() { begin(); }
    ~DrawingTest() override { EXPECT_THAT(end_findings(), testing::IsEmpty()); }
};

inline constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

}  // namespace stage_test
