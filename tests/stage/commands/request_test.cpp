// Requests, the rectangles that answer them, and the pixels that come with them.
#include <algorithm>

#include "stage/services/smart_render_callbacks.h"
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using testing::IsEmpty;

std::array<A_long, 4> sides(const PF_LRect &rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}
using Sides = std::array<A_long, 4>;

stage::RenderSettings asking(const PF_LRect &rect) {
    stage::RenderSettings settings;
    settings.request = rect;
    return settings;
}

TEST(Request, a_part_of_the_layer_gives_worlds_of_that_part) {
    RogueSession rogue;
    rogue.open({20, 10});
    const stage::RenderResult result = rogue.render(asking({3, 2, 9, 7}));
    const rogue::Seen &seen = rogue.seen();
    EXPECT_EQ(sides(seen.request), (Sides{3, 2, 9, 7}));
    EXPECT_EQ(sides(seen.input_rect), (Sides{3, 2, 9, 7}));
    EXPECT_EQ(sides(seen.input_max), (Sides{0, 0, 20, 10}));
    for (const rogue::SeenWorld &world : {seen.input, seen.output}) {
        EXPECT_EQ(world.width, 6);
        EXPECT_EQ(world.height, 5);
        EXPECT_EQ(world.origin_x, 3);
        EXPECT_EQ(world.origin_y, 2);
        EXPECT_EQ(world.rowbytes, 6 * 4 + 16);
    }
    ASSERT_EQ(result.picture.width, 6);
    ASSERT_EQ(result.picture.height, 5);
    for (int y = 0; y < 5; ++y) {
        EXPECT_TRUE(std::equal(result.picture.at(0, y), result.picture.at(0, y) + 24,
                               rogue.picture.at(3, 2 + y)))
            << y;
    }
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Request, more_than_the_layer_is_cut_to_it) {
    RogueSession rogue;
    rogue.open({20, 10});
    const stage::RenderResult result = rogue.render(asking({-5, -4, 30, 12}));
    EXPECT_EQ(sides(rogue.seen().input_rect), (Sides{0, 0, 20, 10}));
    EXPECT_EQ(sides(result.result_rect), (Sides{0, 0, 20, 10}));
    EXPECT_EQ(result.picture.argb, rogue.picture.argb);
}

TEST(Request, an_empty_one_asks_for_the_largest_rectangle_only) {
    RogueSession rogue;
    rogue.open({20, 10});
    rogue.host().trace.enable(true);
    const stage::RenderResult result = rogue.render(asking({0, 0, 0, 0}));
    EXPECT_EQ(result.error, 0);
    EXPECT_TRUE(result.skipped);
    EXPECT_TRUE(result.picture.argb.empty());
    EXPECT_EQ(sides(result.max_result_rect), (Sides{0, 0, 20, 10}));
    EXPECT_EQ(rogue.host().trace.calls().back(), "< PF_Cmd_SMART_PRE_RENDER");
}

TEST(Request, beside_the_layer_nothing_is_rendered) {
    RogueSession rogue;
    rogue.open({20, 10});
    EXPECT_TRUE(rogue.render(asking({20, 0, 30, 10})).skipped);
    EXPECT_EQ(sides(rogue.seen().input_rect), (Sides{0, 0, 0, 0}));
}

TEST(Request, a_result_beyond_it_is_cut_unless_announced) {
    RogueSession rogue("leave_request");
    rogue.open({20, 10});
    stage::RenderResult result = rogue.render(asking({3, 2, 9, 7}));
    EXPECT_EQ(sides(result.result_rect), (Sides{3, 2, 9, 7}));
    EXPECT_EQ(rogue.seen().output.width, 6);
    EXPECT_EQ(rogue.violations(), Names{"rect.result in PF_Cmd_SMART_PRE_RENDER"});

    rogue.choose("leave_request_openly");
    rogue.host().strict.clear();
    result = rogue.render(asking({3, 2, 9, 7}));
    EXPECT_EQ(sides(result.result_rect), (Sides{3, 2, 10, 7}));
    EXPECT_EQ(rogue.seen().output.width, 7);
    EXPECT_THAT(rogue.host().strict.violations(), IsEmpty());
}

TEST(Request, the_layer_parameter_keeps_its_own_size_and_aspect) {
    RogueSession rogue;
    rogue.open({20, 10});
    rogue.set_original({6, 14, 2, 1});
    rogue.render(asking({3, 2, 9, 12}));
    const rogue::Seen &seen = rogue.seen();
    EXPECT_EQ(sides(seen.original_max), (Sides{0, 0, 6, 14}));
    EXPECT_EQ(sides(seen.original_rect), (Sides{3, 2, 6, 12}));
    EXPECT_EQ(sides(seen.input_rect), (Sides{3, 2, 9, 10}));
    EXPECT_EQ(seen.original.width, 3);
    EXPECT_EQ(seen.original.height, 10);
    EXPECT_EQ(seen.original.par.num, 2);
    EXPECT_EQ(seen.input.par.num, 1);
}

TEST(Request, no_layer_in_the_parameter_means_empty_rectangles_and_a_null_world) {
    RogueSession rogue;
    rogue.open({20, 10});
    EXPECT_EQ(rogue.render().error, 0);
    EXPECT_EQ(sides(rogue.seen().original_max), (Sides{0, 0, 0, 0}));
    EXPECT_EQ(rogue.seen().original.width, 0);
}

TEST(Request, sizes_round_up_when_the_resolution_does_not_divide) {
    RogueSession rogue;
    rogue.open({20, 10});
    stage::RenderSettings settings;
    settings.downsample_x = 3;
    settings.downsample_y = 4;
    const stage::RenderResult result = rogue.render(settings);
    EXPECT_EQ(result.picture.width, 7);
    EXPECT_EQ(result.picture.height, 3);
    EXPECT_EQ(rogue.seen().input.width, 7);
    EXPECT_EQ(rogue.seen().output.height, 3);
}

TEST(Request, quality_depth_and_time_reach_the_plug_in) {
    for (const stage::Depth depth : {stage::Depth::U8, stage::Depth::U16, stage::Depth::Float}) {
        RogueSession rogue("", at_depth(depth));
        rogue.open();
        stage::RenderSettings settings;
        settings.frame = 7;
        settings.high_quality = false;
        rogue.render(settings);
        EXPECT_EQ(rogue.seen().bitdepth, static_cast<A_long>(depth));
        EXPECT_EQ(rogue.seen().current_time, 7);
        EXPECT_EQ(rogue.seen().quality, PF_Quality_LO);
        EXPECT_EQ(rogue.seen().input.rowbytes, 8 * stage::bytes_per_pixel(depth) + 16);
    }
}

TEST(PreRender, twice_in_a_row_deletes_the_data_of_the_first) {
    RogueSession rogue("own_pre_render_data");
    rogue.open();
    stage::RenderSettings settings;
    settings.send_pre_render_twice = true;
    EXPECT_EQ(rogue.render(settings).error, 0);
    EXPECT_EQ(rogue.render(settings).error, 0);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Downsampled, full_resolution_hands_the_samples_through) {
    const stage::Picture picture = test_picture(5, 3, stage::Depth::U8);
    EXPECT_EQ(stage::downsampled(picture, 1, 1).argb, picture.argb);
}

TEST(Downsampled, each_pixel_is_the_mean_of_its_block_cut_off_at_the_edges) {
    stage::Picture picture = stage::make_picture(5, 3, stage::SampleType::Float);
    picture.pixel_aspect = 2.0;
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            for (int c = 0; c < 4; ++c) picture.at(x, y)[c] = static_cast<float>(100 * y + x + c);
        }
    }
    const stage::Picture half = stage::downsampled(picture, 2, 2);
    ASSERT_EQ(half.width, 3);
    ASSERT_EQ(half.height, 2);
    EXPECT_EQ(half.pixel_aspect, 2.0);
    for (int c = 0; c < 4; ++c) {
        const auto add = static_cast<float>(c);
        EXPECT_EQ(half.at(0, 0)[c], 50.5f + add);   // 0, 1, 100, 101
        EXPECT_EQ(half.at(2, 0)[c], 54.0f + add);   // 4, 104: one column left
        EXPECT_EQ(half.at(1, 1)[c], 202.5f + add);  // 202, 203: one row left
        EXPECT_EQ(half.at(2, 1)[c], 204.0f + add);
    }
    const stage::Picture uneven = stage::downsampled(picture, 3, 1);
    EXPECT_EQ(uneven.width, 2);
    EXPECT_EQ(uneven.height, 3);
    EXPECT_EQ(uneven.at(0, 1)[0], 101.0f);
    EXPECT_EQ(uneven.at(1, 1)[0], 103.5f);
}

TEST(Rectangles, an_empty_intersection_is_all_zero) {
    EXPECT_EQ(sides(stage::intersection({0, 0, 4, 4}, {2, 1, 9, 9})), (Sides{2, 1, 4, 4}));
    EXPECT_EQ(sides(stage::intersection({0, 0, 4, 4}, {4, 0, 9, 9})), (Sides{0, 0, 0, 0}));
    EXPECT_EQ(sides(stage::intersection({5, 5, 2, 9}, {0, 0, 9, 9})), (Sides{0, 0, 0, 0}));
    EXPECT_TRUE(stage::is_empty({0, 0, 0, 0}));
    EXPECT_TRUE(stage::is_empty({3, 0, 3, 9}));
    EXPECT_FALSE(stage::is_empty({-1, -1, 0, 0}));
}

}  // namespace
}  // namespace stage_test
