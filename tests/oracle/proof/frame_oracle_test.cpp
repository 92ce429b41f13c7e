// Whole frames of the oracle, on a small flat picture whose pixels can be worked out by hand.
#include "oracle/frame_oracle.h"

#include <gtest/gtest.h>

#include "support/image_diff.h"

namespace ks::oracle {
namespace {

using Pixel = Stored;

constexpr Pixel kGrey{255, 101, 101, 101};
constexpr Pixel kDark{255, 30, 30, 30};
constexpr Pixel kGreenEdge{255, 25, 216, 25};  // 0.75 of the outline's colour over kGrey
constexpr int kFixedOne = 65536;

Image flat(int width, int height, const Pixel &pixel) {
    Image image = make_image(width, height, Depth::kByte);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) store_pixel(image, x, y, pixel);
    }
    return image;
}

FrameSettings without_scopes(int layout) {
    FrameSettings s;
    s.show.fill(false);
    s.layout = layout;
    return s;
}

Image render(const FrameSettings &s, const Image *original = nullptr) {
    return render_frame_oracle(flat(160, 90, kGrey), original, s).output;
}

TEST(Frame, under_75_rows_passes_the_input_through) {
    const Image low = flat(160, 74, kGrey);
    const FrameResult result = render_frame_oracle(low, nullptr, FrameSettings{});
    EXPECT_TRUE(test_support::images_equal("low_frame", low, result.output));
    EXPECT_TRUE(result.panels.empty());
    const Image enough = flat(160, 75, kGrey);
    FrameSettings off = without_scopes(7);
    EXPECT_EQ(stored_pixel(render_frame_oracle(enough, nullptr, off).output, 0, 0), kDark);
}

TEST(Frame, single_shows_the_corrected_picture) {
    EXPECT_EQ(stored_pixel(render(without_scopes(1)), 159, 89), kGrey);
    FrameSettings gained = without_scopes(1);
    gained.gain = 2.0;  // entry 202 of 511, twice: 201.6
    EXPECT_EQ(stored_pixel(render(gained), 0, 0), (Pixel{255, 201, 201, 201}));
}

TEST(Frame, split_has_the_picture_top_left_and_three_outlined_tiles) {
    const Image out = render(without_scopes(3));
    EXPECT_EQ(stored_pixel(out, 79, 44), kGrey);
    EXPECT_EQ(stored_pixel(out, 80, 0), (Pixel{255, 216, 25, 25}));
    EXPECT_EQ(stored_pixel(out, 81, 43), (Pixel{255, 216, 25, 25}));
    EXPECT_EQ(stored_pixel(out, 82, 42), kGrey);
    EXPECT_EQ(stored_pixel(out, 0, 45), kGreenEdge);
    EXPECT_EQ(stored_pixel(out, 159, 89), (Pixel{255, 25, 25, 216}));
}

TEST(Frame, classic_leaves_the_strip_and_the_odd_row_dark) {
    const Image out = render(without_scopes(4));
    EXPECT_EQ(stored_pixel(out, 38, 10), kDark);
    EXPECT_EQ(stored_pixel(out, 41, 10), kGrey);
    EXPECT_EQ(stored_pixel(out, 159, 66), kGrey);
    EXPECT_EQ(stored_pixel(out, 38, 80), kDark);
    EXPECT_EQ(stored_pixel(out, 40, 67), (Pixel{255, 216, 25, 25}));
    EXPECT_EQ(stored_pixel(out, 80, 67), kGreenEdge);
    EXPECT_EQ(stored_pixel(out, 120, 88), (Pixel{255, 25, 25, 216}));
    EXPECT_EQ(stored_pixel(out, 100, 89), kDark);
}

TEST(Frame, component_tiles_ignore_gain_and_take_their_colours) {
    FrameSettings s = without_scopes(3);
    s.channels = 2;
    s.gain = 4.0;
    const Image out = render(s);
    EXPECT_EQ(stored_pixel(out, 100, 20), kGrey);                       // luma
    EXPECT_EQ(stored_pixel(out, 20, 60), (Pixel{255, 127, 127, 127}));  // Cb of grey: 0.5
    EXPECT_EQ(stored_pixel(out, 100, 60), (Pixel{255, 127, 127, 127}));
    EXPECT_EQ(stored_pixel(out, 80, 0), (Pixel{255, 216, 216, 216}));
    EXPECT_EQ(stored_pixel(out, 0, 45), (Pixel{255, 223, 223, 31}));   // yellow over 127
    EXPECT_EQ(stored_pixel(out, 80, 45), (Pixel{255, 31, 223, 223}));  // cyan over 127
}

TEST(Frame, windowed_position_rounds_down_and_scales) {
    FrameSettings s = without_scopes(6);
    s.monitor_position = {10 * kFixedOne + 32768, -(3 * kFixedOne + 16384)};
    const Image out = render(s);
    EXPECT_EQ(stored_pixel(out, 9, 0), kDark);
    EXPECT_EQ(stored_pixel(out, 10, 0), kGrey);
    EXPECT_EQ(stored_pixel(out, 89, 40), kGrey);
    EXPECT_EQ(stored_pixel(out, 90, 40), kDark);
    EXPECT_EQ(stored_pixel(out, 89, 41), kDark);
}

TEST(Frame, deeper_pictures_follow_the_same_layout) {
    const Image original_words = [] {
        Image image = make_image(160, 90, Depth::kWord);
        host_fill(image, {255, 255, 255, 255}, std::nullopt);
        return image;
    }();
    Image words = make_image(160, 90, Depth::kWord);
    words.words16.assign(words.words16.size(), 16384);
    for (std::size_t i = 0; i < words.words16.size(); i += 4) words.words16[i] = 32768;
    FrameSettings s = without_scopes(6);
    s.compare = 25;
    s.compare_opacity = 50;
    const Image out16 = render_frame_oracle(words, &original_words, s).output;
    EXPECT_EQ(stored_pixel(out16, 19, 0), (Pixel{32768, 24576, 24576, 24576}));
    EXPECT_EQ(stored_pixel(out16, 20, 0), (Pixel{32768, 32768, 32768, 32768}));  // the edge
    EXPECT_EQ(stored_pixel(out16, 21, 0), (Pixel{32768, 16384, 16384, 16384}));
    EXPECT_EQ(stored_pixel(out16, 80, 46), (Pixel{32768, 3855, 3855, 3855}));

    Image floats = make_image(160, 90, Depth::kFloat);
    floats.floats.assign(floats.floats.size(), 4.0f);
    for (std::size_t i = 0; i < floats.floats.size(); i += 4) floats.floats[i] = 1.0f;
    const Image out32 = render_frame_oracle(floats, nullptr, without_scopes(3)).output;
    EXPECT_EQ(stored_pixel(out32, 10, 10), (Pixel{1, 4, 4, 4}));
    EXPECT_EQ(stored_pixel(out32, 80, 0), (Pixel{1, 1.75, 1, 1}));  // 0.75 over 4.0
}

TEST(Frame, wipe_blends_the_left_part_and_draws_its_edge) {
    const Image original = flat(160, 90, {255, 200, 200, 200});
    FrameSettings s = without_scopes(1);
    s.compare = 25;
    s.compare_opacity = 50;
    const Image out = render(s, &original);
    EXPECT_EQ(stored_pixel(out, 39, 0), (Pixel{255, 150, 150, 150}));
    EXPECT_EQ(stored_pixel(out, 40, 0), (Pixel{255, 228, 228, 228}));
    EXPECT_EQ(stored_pixel(out, 40, 89), (Pixel{255, 228, 228, 228}));
    EXPECT_EQ(stored_pixel(out, 41, 0), kGrey);
}

TEST(Frame, complete_wipe_has_no_edge_and_zero_wipe_no_blend) {
    const Image original = flat(160, 90, {255, 200, 200, 200});
    FrameSettings s = without_scopes(1);
    s.compare = 100;
    EXPECT_TRUE(test_support::images_equal("complete_wipe", original, render(s, &original)));
    s.layout = 6;
    EXPECT_EQ(stored_pixel(render(s, &original), 80, 0), kDark);  // where the edge would stand
    s.layout = 1;
    s.compare = 0;
    EXPECT_TRUE(test_support::images_equal("no_wipe", flat(160, 90, kGrey), render(s, &original)));
}

TEST(Frame, smaller_original_is_centred) {
    const Image original = flat(151, 83, {255, 200, 200, 200});
    FrameSettings s = without_scopes(1);
    s.compare = 100;
    const Image out = render(s, &original);  // offset (4, 3)
    EXPECT_EQ(stored_pixel(out, 3, 3), kGrey);
    EXPECT_EQ(stored_pixel(out, 4, 2), kGrey);
    EXPECT_EQ(stored_pixel(out, 4, 3), (Pixel{255, 200, 200, 200}));
    EXPECT_EQ(stored_pixel(out, 154, 85), (Pixel{255, 200, 200, 200}));
    EXPECT_EQ(stored_pixel(out, 155, 85), kGrey);
}

TEST(Frame, four_way_wipe_edge_is_one_pixel_below_the_main_view) {
    const Image original = flat(160, 90, {255, 200, 200, 200});
    FrameSettings s = without_scopes(3);
    s.compare = 25;
    s.compare_opacity = 50;
    const Image out = render(s, &original);
    EXPECT_EQ(stored_pixel(out, 19, 44), (Pixel{255, 150, 150, 150}));
    EXPECT_EQ(stored_pixel(out, 20, 44), kGrey);
    EXPECT_EQ(stored_pixel(out, 20, 45), (Pixel{255, 152, 255, 152}));
    EXPECT_EQ(stored_pixel(out, 20, 46), kGreenEdge);
    EXPECT_EQ(stored_pixel(out, 21, 45), kGreenEdge);
}

TEST(Frame, slice_line_is_dashed_at_the_height_of_each_layout) {
    FrameSettings s = without_scopes(1);
    s.show[kSlice] = true;
    const Image single = render(s);
    EXPECT_EQ(stored_pixel(single, 0, 44), kGreenEdge);
    EXPECT_EQ(stored_pixel(single, 3, 44), kGreenEdge);
    EXPECT_EQ(stored_pixel(single, 4, 44), kGrey);
    EXPECT_EQ(stored_pixel(single, 9, 44), kGreenEdge);
    EXPECT_EQ(stored_pixel(single, 0, 45), kGrey);
    s.layout = 3;
    EXPECT_EQ(stored_pixel(render(s), 0, 22), kGreenEdge);
    s.layout = 6;
    s.monitor_position = {10 * kFixedOne, -4 * kFixedOne};
    const Image windowed = render(s);  // trunc(45 * 0.5) - 4
    EXPECT_EQ(stored_pixel(windowed, 10, 18), kGreenEdge);
    EXPECT_EQ(stored_pixel(windowed, 9, 18), kDark);
}

TEST(Frame, slice_at_the_end_stays_inside_except_in_windowed) {
    FrameSettings s = without_scopes(1);
    s.show[kSlice] = true;
    s.slice_position = 100;
    EXPECT_EQ(stored_pixel(render(s), 0, 89), kGreenEdge);
    s.layout = 3;  // trunc(89 * 0.5); row 45 is the second tile's outline
    const Image split = render(s);
    EXPECT_EQ(stored_pixel(split, 0, 44), kGreenEdge);
    EXPECT_EQ(stored_pixel(split, 0, 45), kGreenEdge);
    EXPECT_EQ(stored_pixel(split, 4, 44), kGrey);
    s.layout = 6;  // row trunc(90 * 0.5) lies just below the view
    EXPECT_EQ(stored_pixel(render(s), 0, 45), (Pixel{255, 7, 198, 7}));
}

TEST(Frame, off_is_dark_and_measures_the_uncorrected_input) {
    FrameSettings s;
    s.layout = 7;
    s.gain = 2.0;
    const FrameResult result = render_frame_oracle(flat(160, 90, kGrey), nullptr, s);
    EXPECT_TRUE(test_support::images_equal("off", flat(160, 90, kDark), result.output));
    EXPECT_EQ(result.measured, Measured::kInput);
    EXPECT_EQ(stored_pixel(result.measured_image, 0, 0), kGrey);
}

TEST(Frame, pre_scopes_measures_the_corrected_picture_without_the_wipe) {
    const Image original = flat(160, 90, {255, 9, 9, 9});
    FrameSettings s;
    s.gain = 2.0;
    s.compare = 50;
    const Image input = flat(160, 90, kGrey);
    const FrameResult pre = render_frame_oracle(input, &original, s);
    EXPECT_EQ(pre.measured, Measured::kCorrected);
    EXPECT_EQ(stored_pixel(pre.measured_image, 0, 0), (Pixel{255, 201, 201, 201}));
    s.corrections = 2;
    EXPECT_EQ(render_frame_oracle(input, &original, s).measured, Measured::kInput);
    s.show.fill(false);
    EXPECT_EQ(render_frame_oracle(input, &original, s).measured, Measured::kNothing);
}

std::vector<std::array<int, 3>> sizes(const FrameSettings &s, int width, int height) {
    std::vector<std::array<int, 3>> list;
    for (const PanelSize &p : panel_sizes(s, width, height))
        list.push_back({p.kind, p.width, p.height});
    return list;
}

TEST(Panels, are_made_in_walk_order_with_a_label_strip) {
    FrameSettings s;
    s.show.fill(true);
    EXPECT_EQ(sizes(s, 1920, 1080),
              (std::vector<std::array<int, 3>>{
                  {1, 200, 130}, {3, 200, 130}, {2, 200, 218}, {4, 200, 130}, {5, 272, 102}}));
}

TEST(Panels, shrink_with_the_resolution) {
    FrameSettings s;
    s.show = {false, true, true, false, false, true};
    s.downsample_x_den = s.downsample_y_den = 2;
    EXPECT_EQ(sizes(s, 960, 540),
              (std::vector<std::array<int, 3>>{{1, 100, 65}, {2, 100, 109}, {5, 136, 51}}));
    s.downsample_x_den = 3;
    s.downsample_y_den = 4;
    EXPECT_EQ(sizes(s, 640, 270),
              (std::vector<std::array<int, 3>>{{1, 66, 32}, {2, 66, 54}, {5, 90, 25}}));
}

TEST(Panels, follow_the_pixel_aspect_and_the_aspect_choice) {
    FrameSettings s;
    s.show = {false, true, false, false, false, false};
    s.par_num = 2;
    EXPECT_EQ(sizes(s, 1920, 1080), (std::vector<std::array<int, 3>>{{1, 100, 74}}));
    s.par_num = 1;
    s.aspect = 3;
    EXPECT_EQ(sizes(s, 1920, 1080), (std::vector<std::array<int, 3>>{{1, 200, 168}}));
    s.aspect = 4;
    EXPECT_EQ(sizes(s, 1920, 1080), (std::vector<std::array<int, 3>>{{1, 200, 218}}));
}

TEST(Stacking, order_survives_while_the_number_stays) {
    const StackingOrder stored{{2, 1, 3, 0, 0}, 3};
    EXPECT_EQ(next_order(stored, {{1, 1, 1}, {3, 1, 1}, {2, 1, 1}}).kinds, stored.kinds);
    const StackingOrder two = next_order(stored, {{1, 1, 1}, {2, 1, 1}});
    EXPECT_EQ(two.count, 2);
    EXPECT_EQ(two.kinds, (std::array<std::int8_t, 5>{1, 2, 0, 0, 0}));
    const StackingOrder fresh = next_order({{}, 0}, {{1, 1, 1}, {3, 1, 1}, {2, 1, 1}});
    EXPECT_EQ(fresh.kinds, (std::array<std::int8_t, 5>{1, 3, 2, 0, 0}));
}

TEST(Stacking, first_entry_ends_on_top_and_positions_round_down) {
    const Image red = flat(200, 130, {255, 200, 0, 0});
    const Image blue = flat(200, 218, {255, 0, 0, 200});
    FrameSettings s;
    s.show = {false, true, true, false, false, false};
    s.layout = 7;
    s.order = {{1, 2, 0, 0, 0}, 2};
    s.position[kWaveform] = {50 * kFixedOne + 65535, 40 * kFixedOne};
    s.panel_pictures[kWaveform] = &red;
    s.panel_pictures[kVectorscope] = &blue;
    const Image out = render(s);
    EXPECT_EQ(stored_pixel(out, 49, 40), (Pixel{255, 0, 0, 200}));
    EXPECT_EQ(stored_pixel(out, 50, 40), (Pixel{255, 200, 0, 0}));
    s.order.kinds = {2, 1, 0, 0, 0};
    EXPECT_EQ(stored_pixel(render(s), 50, 40), (Pixel{255, 0, 0, 200}));
}

TEST(Stacking, a_stale_order_of_equal_length_leaves_the_new_scope_out) {
    const Image red = flat(200, 130, {255, 200, 0, 0});
    FrameSettings s;
    s.show = {false, false, false, true, false, false};
    s.layout = 7;
    s.order = {{1, 0, 0, 0, 0}, 1};
    s.panel_pictures[kParade] = &red;
    EXPECT_EQ(stored_pixel(render(s), 0, 0), kDark);
}

TEST(Stacking, empty_panels_change_nothing) {
    FrameSettings with = without_scopes(4);
    with.show = FrameSettings{}.show;
    EXPECT_TRUE(
        test_support::images_equal("empty_panels", render(without_scopes(4)), render(with)));
}

}  // namespace
}  // namespace ks::oracle
