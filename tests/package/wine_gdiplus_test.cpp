// The gdiplus.dll that stands beside the programs for tests under Wine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "stage/binary/pe_file.h"
#include "support/paths.h"

namespace {

stage::PeFile library(const char *name) {
    return stage::read_pe(stage::read_whole_file(paths::build() + "/" + name));
}

std::vector<std::string> sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

TEST(WineGdiplus, exports_every_function_of_the_library_that_it_stands_for) {
    const auto expected = sorted(library("gdiplus_wine.dll").exports);
    EXPECT_GT(expected.size(), 600u);
    EXPECT_EQ(sorted(library("gdiplus.dll").exports), expected);
}

TEST(WineGdiplus, calls_just_the_functions_that_it_replaces) {
    std::vector<std::string> called;
    for (const stage::PeImport &import : library("gdiplus.dll").imports) {
        if (import.dll == "gdiplus_wine.dll") called = sorted(import.functions);
    }
    EXPECT_THAT(called, testing::ElementsAre("GdipDeleteGraphics", "GdipDisposeImage",
                                             "GdipGetImageGraphicsContext", "GdiplusShutdown"));
}

}  // namespace
