// Frame and overlay together, at several zooms and pans.
#include "support/stage/painted.h"

namespace stage_test {
namespace {

using stage::ViewImage;
using stage::Viewport;

/// A viewport and a mark that an effect draws at source point (20, 10).
struct ZoomCase {
    double zoom, pan_x, pan_y;
};

TEST(WindowPicture, the_overlay_lies_where_the_effect_put_it_at_every_zoom_and_pan) {
    const ViewImage frame{40, 30, std::vector<std::uint32_t>(1200, 0xFF808080)};
    for (const ZoomCase &row :
         {ZoomCase{0.25, 30, 40}, ZoomCase{1, 30, 40}, ZoomCase{4, 7, 9}, ZoomCase{4, -40, -16}}) {
        Viewport view;
        view.width = 200;
        view.height = 150;
        view.zoom = row.zoom;
        view.pan_x = row.pan_x;
        view.pan_y = row.pan_y;
        const auto x = static_cast<int>(view.window_x(20)), y = static_cast<int>(view.window_y(10));
        const stage::DrawList overlay{
            {painted_rect({static_cast<float>(x), static_cast<float>(y), 3, 2}, kRedColor)}};
        const ViewImage picture = stage::window_picture(frame, 40, 30, view, overlay, kTestTheme);
        const ViewImage plain = stage::frame_in_window(frame, 40, 30, view);
        for (int py = 0; py < 150; ++py) {
            for (int px = 0; px < 200; ++px) {
                const bool marked = px >= x && px < x + 3 && py >= y && py < y + 2;
                ASSERT_EQ(picture.at(px, py), marked ? kRed : plain.at(px, py))
                    << px << " " << py << " at " << row.zoom;
            }
        }
    }
}

TEST(WindowPicture, stays_opaque_under_a_translucent_overlay) {
    const ViewImage frame{4, 4, std::vector<std::uint32_t>(16, 0xFF000000)};
    Viewport view;
    view.width = view.height = 4;
    const stage::DrawList overlay{{painted_rect({0, 0, 4, 4}, {1, 1, 1, 0.5f})}};
    const ViewImage picture = stage::window_picture(frame, 4, 4, view, overlay, kTestTheme);
    EXPECT_EQ(picture.at(1, 1) >> 24, 0xFFu);
    EXPECT_NEAR(static_cast<double>(picture.at(1, 1) & 0xFF), 128, 1);
}

TEST(WindowPicture, the_overlay_alone_over_the_frame_gives_the_same_pixels) {
    const ViewImage frame{40, 30, std::vector<std::uint32_t>(1200, 0xFF336699)};
    Viewport view;
    view.width = Painted::kWidth;
    view.height = Painted::kHeight;
    stage::DrawPrimitive fill = primitive(Kind::kThemeFill);
    fill.path = polygon({{5, 5}, {30, 5}, {5, 12}});
    fill.shadow = true;
    const stage::DrawList overlay{{fill}};
    const ViewImage picture = stage::window_picture(frame, 40, 30, view, overlay, kTestTheme);
    const auto alone = stage::overlay_picture(40, 30, overlay, kTestTheme);
    for (std::size_t i = 0; i < alone.size(); ++i) {
        const std::uint32_t alpha = alone[i] >> 24;
        for (const int place : {16, 8, 0}) {
            const double expected = (alone[i] >> place & 0xFF) +
                                    (frame.pixels[i] >> place & 0xFF) * (255.0 - alpha) / 255.0;
            // Shadow and figure are rounded one after the other.
            ASSERT_NEAR(static_cast<double>(picture.pixels[i] >> place & 0xFF), expected, 2);
        }
    }
}

}  // namespace
}  // namespace stage_test
