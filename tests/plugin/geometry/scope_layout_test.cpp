// Layout units against the oracle's, and by hand.
#include "geometry/scope_layout.h"

#include <gtest/gtest.h>

#include "oracle/scope_oracle.h"

namespace ks {
namespace {

TEST(LabelScaleTest, follows_the_layer_and_the_downsampling) {
    EXPECT_DOUBLE_EQ(label_scale(1920, 1920), 1.0);
    EXPECT_DOUBLE_EQ(label_scale(1920, 480), 2.0);  // sqrt(4)
    EXPECT_DOUBLE_EQ(label_scale(2560, 2560), 1.0);
    EXPECT_DOUBLE_EQ(label_scale(3840, 3840), 1.5);
    EXPECT_DOUBLE_EQ(label_scale(5120, 1280), 3.0);  // sqrt(4) * 2, at most 3
    EXPECT_DOUBLE_EQ(label_scale(30000, 30000), 3.0);
    EXPECT_DOUBLE_EQ(label_scale(480, 1920), 0.5);
}

TEST(LabelScaleTest, sizes_that_are_not_above_zero_count_as_one) {
    EXPECT_DOUBLE_EQ(label_scale(0, 0), 1.0);
    EXPECT_DOUBLE_EQ(label_scale(-5, 100), 0.1);
    EXPECT_DOUBLE_EQ(label_scale(4, 0), 2.0);
}

TEST(LayoutUnitsTest, at_full_resolution) {
    const LayoutUnits u = layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 1}));
    EXPECT_EQ(u.label_band, 18);
    EXPECT_EQ(u.margin_v, 8);
    EXPECT_EQ(u.margin_left, 30);
    EXPECT_EQ(u.margin_right, 8);
    EXPECT_EQ(u.vector_inset, 8);
    EXPECT_EQ(u.gap, 8);
}

TEST(LayoutUnitsTest, lengths_are_truncated) {
    // s 1.5, kx 1 / (3 * 1.1), ky 1 / 4
    const LayoutUnits u = layout_units(1.5, make_frame_scale({11, 10}, {1, 3}, {1, 4}));
    EXPECT_EQ(u.label_band, 6);    // 6.75
    EXPECT_EQ(u.margin_v, 3);      // 3.0
    EXPECT_EQ(u.margin_left, 13);  // 13.6
    EXPECT_EQ(u.margin_right, 3);  // 3.6
    EXPECT_EQ(u.vector_inset, 3);  // 3.8
    EXPECT_EQ(u.gap, 2);
    EXPECT_EQ(layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 3})).gap, 2);
    EXPECT_EQ(layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 9})).gap, 0);
}

TEST(LayoutUnitsTest, agree_with_the_oracle) {
    for (const int layer : {1, 320, 1920, 2561, 3840, 8192, 30000}) {
        for (const int den_x : {1, 2, 3, 4, 7}) {
            for (const int den_y : {1, 2, 4, 9}) {
                for (const auto &[num, den] : {std::pair{1, 1}, {10, 11}, {2, 1}, {1, 2}}) {
                    oracle::ScopeSettings s;
                    s.layer_width = layer;
                    s.output_width = std::max(layer / den_x, 1);
                    s.downsample_x_den = den_x;
                    s.downsample_y_den = den_y;
                    s.par_num = num;
                    s.par_den = den;
                    const oracle::LayoutUnits want = oracle::layout_units(s);
                    const auto u = [](int v) { return static_cast<std::uint32_t>(v); };
                    const LayoutUnits got =
                        layout_units(label_scale(s.layer_width, s.output_width),
                                     make_frame_scale({num, u(den)}, {1, u(den_x)}, {1, u(den_y)}));
                    EXPECT_DOUBLE_EQ(got.scale, want.label_scale);
                    EXPECT_EQ(got.label_band, want.label_band);
                    EXPECT_EQ(got.margin_v, want.vertical_margin);
                    EXPECT_EQ(got.margin_left, want.left_margin);
                    EXPECT_EQ(got.margin_right, want.right_margin);
                    EXPECT_EQ(got.vector_inset, want.vectorscope_inset);
                    EXPECT_EQ(got.gap, want.small_gap);
                }
            }
        }
    }
}

TEST(TraceAreaTest, lies_inside_the_margins) {
    const LayoutUnits u = layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 1}));
    const TraceArea area = trace_area({480, 304}, u);
    EXPECT_EQ(area.left, 30);
    EXPECT_EQ(area.right, 472);
    EXPECT_EQ(area.top, 18);
    EXPECT_EQ(area.bottom, 296);
    EXPECT_EQ(area.span, 270.0);
    EXPECT_LT(trace_area({30, 30}, u).span, 0.0);
    EXPECT_LT(trace_area({30, 30}, u).right, area.left);
}

}  // namespace
}  // namespace ks
