// The frame in the window: geometry at several zooms, averaging, windows that show nothing.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "stage/desk/viewer/window_picture.h"

namespace stage_test {
namespace {

using stage::frame_in_window;
using stage::kPasteboard;
using stage::ViewImage;
using stage::Viewport;

/// Pixel (x, y) is red x, green y, blue 0x40.
ViewImage coordinates(int width, int height) {
    ViewImage image{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.pixels.push_back(0xFF000040u | static_cast<std::uint32_t>(x) << 16 |
                                   static_cast<std::uint32_t>(y) << 8);
        }
    }
    return image;
}

Viewport viewport(int width, int height, double zoom, double pan_x, double pan_y) {
    Viewport view;
    view.width = width;
    view.height = height;
    view.zoom = zoom;
    view.pan_x = pan_x;
    view.pan_y = pan_y;
    return view;
}

int red(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}
int green(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 8 & 0xFF);
}

TEST(FrameInWindow, at_full_size_every_pixel_is_itself_beside_the_pasteboard) {
    const ViewImage frame = coordinates(40, 30);
    const ViewImage window = frame_in_window(frame, 40, 30, viewport(60, 50, 1, 10, 5));
    ASSERT_EQ(window.width, 60);
    ASSERT_EQ(window.height, 50);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 60; ++x) {
            const bool inside = x >= 10 && x < 50 && y >= 5 && y < 35;
            EXPECT_EQ(window.at(x, y), inside ? frame.at(x - 10, y - 5) : kPasteboard);
        }
    }
}

TEST(FrameInWindow, at_400_percent_a_pixel_covers_four_by_four) {
    const ViewImage frame = coordinates(40, 30);
    const ViewImage window = frame_in_window(frame, 40, 30, viewport(64, 64, 4, -32, 8));
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            EXPECT_EQ(window.at(x, y), y < 8 ? kPasteboard : frame.at((x + 32) / 4, (y - 8) / 4));
        }
    }
}

TEST(FrameInWindow, at_25_percent_a_pixel_is_the_mean_of_sixteen) {
    const ViewImage frame = coordinates(80, 60);
    const ViewImage window = frame_in_window(frame, 80, 60, viewport(30, 20, 0.25, 3, 2));
    for (int y = 0; y < 15; ++y) {
        for (int x = 0; x < 20; ++x) {
            // Means of 4x..4x+3, rounded either way.
            EXPECT_NEAR(red(window.at(x + 3, y + 2)), 4 * x + 1.5, 0.5);
            EXPECT_NEAR(green(window.at(x + 3, y + 2)), 4 * y + 1.5, 0.5);
            EXPECT_EQ(window.at(x + 3, y + 2) & 0xFF0000FF, 0xFF000040);
        }
    }
    EXPECT_EQ(window.at(2, 2), kPasteboard);
    EXPECT_EQ(window.at(23, 2), kPasteboard);
    EXPECT_EQ(window.at(3, 1), kPasteboard);
    EXPECT_EQ(window.at(3, 17), kPasteboard);
}

TEST(FrameInWindow, means_are_weighted_by_what_a_pixel_covers) {
    ViewImage frame{3, 1, {0xFF000000, 0xFFFFFFFF, 0xFF000000}};
    // Two window pixels for three: each has two thirds of an end and one third of the middle.
    const ViewImage window = frame_in_window(frame, 3, 3, viewport(2, 2, 2.0 / 3.0, 0, 0));
    EXPECT_NEAR(red(window.at(0, 0)), 85, 1);
    EXPECT_NEAR(red(window.at(1, 0)), 85, 1);
}

TEST(FrameInWindow, one_colour_stays_that_colour_at_every_zoom) {
    for (const std::uint32_t color : {0xFF000000u, 0xFFFFFFFFu, 0xFF01FE80u}) {
        ViewImage frame{97, 61, std::vector<std::uint32_t>(97 * 61, color)};
        for (const double zoom : {0.015, 0.1, 0.33, 0.6, 0.999, 1.0, 1.5, 64.0}) {
            const ViewImage window = frame_in_window(frame, 97, 61, viewport(80, 60, zoom, 0, 0));
            EXPECT_EQ(window.at(0, 0), color) << zoom;
        }
    }
}

TEST(FrameInWindow, stripes_keep_their_mean_brightness) {
    ViewImage frame{192, 108, {}};
    for (int i = 0; i < 192 * 108; ++i) frame.pixels.push_back(i % 2 ? 0xFFFFFFFF : 0xFF000000);
    const ViewImage window = frame_in_window(frame, 192, 108, viewport(115, 64, 0.6, 0, 0));
    double sum = 0;
    for (const std::uint32_t pixel : window.pixels) sum += red(pixel);
    EXPECT_NEAR(sum / static_cast<double>(window.pixels.size()), 127.5, 1.0);
}

TEST(FrameInWindow, a_frame_of_lower_resolution_covers_the_same_place) {
    const ViewImage frame = coordinates(20, 15);  // half of 40 x 30
    const ViewImage window = frame_in_window(frame, 40, 30, viewport(60, 50, 1, 10, 5));
    EXPECT_EQ(window.at(10, 5), frame.at(0, 0));
    EXPECT_EQ(window.at(11, 6), frame.at(0, 0));
    EXPECT_EQ(window.at(12, 6), frame.at(1, 0));
    EXPECT_EQ(window.at(49, 34), frame.at(19, 14));
    EXPECT_EQ(window.at(50, 34), kPasteboard);
}

TEST(FrameInWindow, the_stretch_widens_alone) {
    const ViewImage frame = coordinates(20, 10);
    Viewport view = viewport(60, 20, 1, 0, 0);
    view.stretch = 2;
    const ViewImage window = frame_in_window(frame, 20, 10, view);
    EXPECT_EQ(window.at(39, 9), frame.at(19, 9));
    EXPECT_EQ(window.at(38, 9), frame.at(19, 9));
    EXPECT_EQ(window.at(40, 9), kPasteboard);
    EXPECT_EQ(window.at(39, 10), kPasteboard);
}

TEST(FrameInWindow, a_pixel_shows_the_source_when_its_centre_lies_on_it) {
    const ViewImage frame = coordinates(10, 10);
    const ViewImage window = frame_in_window(frame, 10, 10, viewport(20, 20, 1, 3.4, 3.6));
    EXPECT_EQ(window.at(2, 8), kPasteboard);
    EXPECT_NE(window.at(3, 8), kPasteboard);
    EXPECT_NE(window.at(12, 8), kPasteboard);
    EXPECT_EQ(window.at(13, 8), kPasteboard);
    EXPECT_EQ(window.at(8, 3), kPasteboard);
    EXPECT_NE(window.at(8, 4), kPasteboard);
    EXPECT_NE(window.at(8, 13), kPasteboard);
    EXPECT_EQ(window.at(8, 14), kPasteboard);
}

TEST(FrameInWindow, an_empty_frame_leaves_the_source_black) {
    const ViewImage window = frame_in_window({}, 10, 10, viewport(20, 20, 1, 5, 5));
    EXPECT_EQ(window.at(5, 5), 0xFF000000u);
    EXPECT_EQ(window.at(14, 14), 0xFF000000u);
    EXPECT_EQ(window.at(4, 5), kPasteboard);
    EXPECT_EQ(window.at(15, 14), kPasteboard);
}

TEST(FrameInWindow, a_frame_with_too_few_pixels_counts_as_empty) {
    const ViewImage window =
        frame_in_window({10, 10, {0xFFFFFFFF}}, 10, 10, viewport(20, 20, 1, 5, 5));
    EXPECT_EQ(window.at(5, 5), 0xFF000000u);
}

TEST(FrameInWindow, a_window_without_pixels_gives_an_empty_image) {
    const ViewImage frame = coordinates(10, 10);
    EXPECT_TRUE(frame_in_window(frame, 10, 10, viewport(0, 20, 1, 0, 0)).pixels.empty());
    EXPECT_TRUE(frame_in_window(frame, 10, 10, viewport(20, -5, 1, 0, 0)).pixels.empty());
}

TEST(FrameInWindow, viewports_beyond_sense_show_the_pasteboard) {
    const ViewImage frame = coordinates(10, 10);
    const double nan = std::nan(""), huge = std::numeric_limits<double>::max();
    for (const Viewport &view :
         {viewport(8, 8, nan, 0, 0), viewport(8, 8, 1, nan, 0), viewport(8, 8, 0, 0, 0),
          viewport(8, 8, -1, 0, 0), viewport(8, 8, INFINITY, 0, 0), viewport(8, 8, 1, huge, 0),
          viewport(8, 8, 1, 0, -huge), viewport(8, 8, 1e-300, 0, 0)}) {
        const ViewImage window = frame_in_window(frame, 10, 10, view);
        for (const std::uint32_t pixel : window.pixels) EXPECT_EQ(pixel, kPasteboard);
    }
}

TEST(FrameInWindow, a_viewport_deep_inside_one_pixel_shows_that_pixel) {
    const ViewImage frame = coordinates(10, 10);
    const ViewImage window = frame_in_window(frame, 10, 10, viewport(8, 8, 1e6, -3.5e6, -7.5e6));
    for (const std::uint32_t pixel : window.pixels) EXPECT_EQ(pixel, frame.at(3, 7));
}

TEST(FrameInWindow, the_window_is_opaque_whatever_the_frame_says) {
    ViewImage frame{4, 4, std::vector<std::uint32_t>(16, 0x00112233)};
    EXPECT_EQ(frame_in_window(frame, 4, 4, viewport(4, 4, 1, 0, 0)).at(1, 1), 0xFF112233u);
    EXPECT_EQ(frame_in_window(frame, 4, 4, viewport(4, 4, 0.5, 0, 0)).at(1, 1), 0xFF112233u);
}

}  // namespace
}  // namespace stage_test
