// Frames of a comp: layers in order, each with its effects.
#include "stage/desk/viewer/comp_render.h"

#include <cmath>

#include "hostapi/constants.h"
#include "support/stage/comp_scene.h"
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::Depth;
using stage::LayerId;
using stage::Picture;
using stage::RenderSettings;
using stage::ViewFrame;

// Choices of "Primary Monitor View" that change every colour picture.
constexpr int kRedView = 4;
constexpr int kGreenView = 5;

stage::ViewImage shown_in(CompScene &scene, const Picture &picture) {
    return shown(picture, scene.depth(), scene.pool());
}

bool same(const stage::ViewImage &a, const stage::ViewImage &b) {
    return a.pixels == b.pixels;
}

TEST(CompRender, without_effects_a_frame_is_the_composite) {
    for (const Depth depth : kAllDepths) {
        CompScene scene(options_at(depth));
        scene.add_random(1);
        stage::Layer &small = *scene.project().layer(scene.add_random(2, 40, 30, false));
        small.position_x = 20.25;
        small.scale = 70;
        stage::Layer &faint = *scene.project().layer(scene.add_random(3, 50, 50));
        faint.opacity = 40;
        expect_same(scene.frame().image, shown_in(scene, scene.plain()), depth_name(depth));
        EXPECT_TRUE(scene.frame().effects.empty());
    }
}

TEST(CompRender, an_empty_comp_is_black) {
    CompScene scene;
    const ViewFrame frame = scene.frame();
    ASSERT_EQ(frame.image.pixels.size(), std::size_t{96 * 160});
    for (const std::uint32_t pixel : frame.image.pixels) EXPECT_EQ(pixel, 0xFF000000u);
}

TEST(CompRender, an_adjustment_effect_receives_everything_beneath) {
    for (const Depth depth : kAllDepths) {
        CompScene scene(options_at(depth));
        scene.add_random(1);
        scene.project().layer(scene.add_random(2, 40, 30, false))->scale = 130;
        const Picture beneath = scene.plain();
        scene.apply(scene.add_adjustment(), kRedView);
        const ViewFrame frame = scene.frame();
        ASSERT_EQ(frame.effects.size(), 1u);
        EXPECT_EQ(frame.effects[0].error, 0);
        EXPECT_FALSE(frame.effects[0].skipped);
        EXPECT_GT(frame.effects[0].seconds, 0);
        EXPECT_GE(frame.seconds, frame.effects[0].seconds);
        expect_same(frame.image, shown_in(scene, scene.alone(beneath, kRedView)),
                    depth_name(depth));
        EXPECT_FALSE(same(frame.image, shown_in(scene, beneath)));
    }
}

TEST(CompRender, is_the_frame_that_the_session_renders) {
    CompScene scene;
    scene.add_random(1);
    stage::EffectInstance &effect = scene.apply(scene.add_adjustment(), kRedView);
    expect_same(scene.frame().image, shown_in(scene, scene.session.render(effect, {}).picture));
}

TEST(CompRender, effects_beneath_an_adjustment_layer_are_in_what_it_receives) {
    CompScene scene;
    const Picture photo = random_picture(1, 96, 160, Depth::U8);
    stage::EffectInstance &lower = scene.apply(scene.add(photo), kRedView);
    stage::EffectInstance &upper = scene.apply(scene.add_adjustment(), kGreenView);
    scene.set(upper, "Monitor Gain", 1.5);
    scene.set(upper, "Apply Corrections", 2);
    const ViewFrame frame = scene.frame();
    ASSERT_EQ(frame.effects.size(), 2u);
    EXPECT_EQ(frame.effects[0].instance, &lower);
    EXPECT_EQ(frame.effects[1].instance, &upper);

    const Picture once = scene.alone(photo, kRedView);
    scene.begin_comp();
    stage::EffectInstance &alone = scene.apply(scene.add(once), kGreenView);
    scene.set(alone, "Monitor Gain", 1.5);
    scene.set(alone, "Apply Corrections", 2);
    expect_same(frame.image, shown_in(scene, scene.session.render(alone, {}).picture));
}

TEST(CompRender, effects_of_one_layer_follow_each_other) {
    CompScene scene;
    const Picture photo = random_picture(7, 96, 160, Depth::U8);
    const LayerId layer = scene.add(photo);
    scene.apply(layer, kRedView);
    scene.apply(layer, kGreenView);
    EXPECT_EQ(scene.frame().effects.size(), 2u);
    expect_same(scene.frame().image,
                shown_in(scene, scene.alone(scene.alone(photo, kRedView), kGreenView)));
}

TEST(CompRender, layers_above_an_effect_lie_over_its_frame) {
    for (const Depth depth : kAllDepths) {
        CompScene scene(options_at(depth));
        const Picture photo = random_picture(1, 96, 160, depth);
        const LayerId bottom = scene.add(photo);
        const auto add_above = [&] {
            stage::Layer &above = *scene.project().layer(scene.add_random(2, 41, 33, false));
            above.position_x = 30.5;
            above.position_y = 44.75;
            above.scale = 140;
            above.opacity = 60;
        };
        add_above();
        scene.apply(bottom, kRedView);
        const stage::ViewImage is = scene.frame().image;
        // The same comp with the effect's frame as footage.
        const Picture once = scene.alone(photo, kRedView);
        scene.begin_comp();
        scene.add(once);
        add_above();
        expect_same(is, shown_in(scene, scene.plain()), depth_name(depth));
    }
}

TEST(CompRender, an_effect_on_a_small_layer_is_placed_with_it) {
    CompScene scene;
    scene.add_random(1);
    const Picture small = random_picture(2, 90, 80, Depth::U8, false);
    const LayerId layer = scene.add(small);
    scene.project().layer(layer)->position_x = 10;  // partly outside
    scene.project().layer(layer)->scale = 80;
    scene.apply(layer, kRedView);
    const stage::ViewImage is = scene.frame().image;
    const Picture once = scene.alone(small, kRedView);
    scene.begin_comp();
    scene.add_random(1);
    const LayerId copy = scene.add(once);
    scene.project().layer(copy)->position_x = 10;
    scene.project().layer(copy)->scale = 80;
    expect_same(is, shown_in(scene, scene.plain()));
}

TEST(CompRender, hidden_layers_and_their_effects_take_no_part) {
    CompScene scene;
    scene.add_random(1);
    const LayerId layer = scene.add_adjustment();
    scene.apply(layer, kRedView);
    const Picture plain = scene.plain();
    scene.project().layer(layer)->flags &= ~stage::layer_flag::kVideoActive;
    const ViewFrame frame = scene.frame();
    EXPECT_TRUE(frame.effects.empty());
    expect_same(frame.image, shown_in(scene, plain));
}

TEST(CompRender, an_adjustment_over_nothing_is_skipped) {
    CompScene scene;
    // What set-up puts beneath an adjustment layer is taken away again.
    const LayerId layer = scene.add_adjustment();
    scene.apply(layer, kRedView);
    for (const stage::Layer &other : scene.project().comp(scene.comp)->layers) {
        if (other.id != layer) {
            scene.project().layer(other.id)->flags &= ~stage::layer_flag::kVideoActive;
        }
    }
    const ViewFrame frame = scene.frame();
    ASSERT_EQ(frame.effects.size(), 1u);
    EXPECT_TRUE(frame.effects[0].skipped);
    EXPECT_EQ(frame.effects[0].error, 0);
    for (const std::uint32_t pixel : frame.image.pixels) EXPECT_EQ(pixel, 0xFF000000u);
}

TEST(CompRender, a_moved_adjustment_layer_changes_what_it_covers_as_it_sees_it) {
    CompScene scene;
    scene.add_random(1);
    const Picture beneath = scene.plain();
    const LayerId layer = scene.add_adjustment();
    scene.apply(layer, kRedView);
    stage::Layer &moved = *scene.project().layer(layer);
    moved.position_x += 10;
    moved.position_y -= 25;
    const stage::ViewImage before = shown_in(scene, beneath);
    Picture seen = stage::make_picture(96, 160, stage::SampleType::Float);
    for (int y = 25; y < 160; ++y) {
        for (int x = 0; x < 86; ++x) std::copy_n(beneath.at(x + 10, y - 25), 4, seen.at(x, y));
    }
    const stage::ViewImage all = shown_in(scene, scene.alone(seen, kRedView));
    const stage::ViewImage is = scene.frame().image;
    EXPECT_FALSE(same(is, before));
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 96; ++x) {
            const bool covered = x >= 10 && y < 135;
            ASSERT_EQ(is.at(x, y), covered ? all.at(x - 10, y + 25) : before.at(x, y))
                << x << ", " << y;
        }
    }
}

TEST(CompRender, opacity_of_an_adjustment_layer_mixes) {
    CompScene scene;
    scene.add_random(1);
    const Picture beneath = scene.plain();
    const LayerId layer = scene.add_adjustment();
    scene.apply(layer, kRedView);
    scene.project().layer(layer)->opacity = 25;
    const Picture adjusted = scene.alone(beneath, kRedView);
    Picture mixed = beneath;
    for (std::size_t i = 0; i < mixed.argb.size(); ++i) {
        mixed.argb[i] = beneath.argb[i] * 0.75f + adjusted.argb[i] * 0.25f;
    }
    expect_same(scene.frame().image, shown_in(scene, mixed));
}

TEST(CompRender, effects_of_nested_comps_are_rendered_but_not_those_of_their_guides) {
    CompScene scene;
    const Picture photo = random_picture(1, 96, 160, Depth::U8);
    const LayerId inner = scene.add(photo);
    scene.apply(inner, kRedView);
    const LayerId guide = scene.add_adjustment();
    scene.apply(guide, kGreenView);
    ASSERT_TRUE(scene.project().layer(guide)->has_flag(stage::layer_flag::kGuide));
    const stage::ItemId nested = scene.comp;
    scene.comp = scene.project().add_comp("outer", 96, 160, 1, 1, 10);
    scene.project().add_layer(scene.comp, nested, 0, "nested");
    EXPECT_EQ(scene.frame().effects.size(), 1u);
    expect_same(scene.frame().image, shown_in(scene, scene.alone(photo, kRedView)));
}

TEST(CompRender, reduced_resolutions_round_sizes_up_and_place_layers_there) {
    CompScene scene;
    scene.add_random(1, 96, 160);
    stage::Layer &small = *scene.project().layer(scene.add(random_picture(2, 21, 20, Depth::U8)));
    small.position_x = 10.5 + 30;  // left edge at 30, upper edge at 60
    small.position_y = 10 + 60;
    for (const int by : {2, 3, 4, 5}) {
        RenderSettings settings;
        settings.downsample_x = settings.downsample_y = by;
        const stage::ViewImage image = scene.frame(settings).image;
        EXPECT_EQ(image.width, (96 + by - 1) / by);
        EXPECT_EQ(image.height, (160 + by - 1) / by);
        expect_same(image, shown_in(scene, scene.plain(settings)));
    }
    // On whole blocks each pixel is the mean of its block.
    RenderSettings half;
    half.downsample_x = half.downsample_y = 2;
    const stage::ViewImage is = scene.frame(half).image;
    const stage::ViewImage should =
        shown_in(scene, downsampled(random_picture(2, 21, 20, Depth::U8), 2, 2));
    for (int y = 0; y < should.height; ++y) {
        for (int x = 0; x < should.width; ++x) {
            ASSERT_EQ(is.at(15 + x, 30 + y), should.at(x, y)) << x << ", " << y;
        }
    }
}

TEST(CompRender, effects_see_the_reduced_input) {
    CompScene scene;
    stage::EffectInstance &effect = scene.apply(scene.add_random(1), kRedView);
    RenderSettings half;
    half.downsample_x = half.downsample_y = 2;
    expect_same(scene.frame(half).image,
                shown_in(scene, scene.session.render(effect, half).picture));
}

TEST(CompRender, is_the_same_with_checks_and_with_threads) {
    stage::ViewImage expected;
    for (const bool strict : {true, false}) {
        stage::HostOptions options;
        options.strict = strict;
        if (!strict) options.schedule = stage::Schedule::with_threads(2);
        CompScene scene(options);
        scene.add_random(1);
        stage::EffectInstance &effect = scene.apply(scene.add_adjustment(), kRedView);
        scene.set(effect, "Monitor Layout", 4);
        scene.set(effect, "Show Waveform Monitor", 1);
        scene.add_random(2, 50, 20, false);
        if (strict) expected = scene.frame().image;
        // Memory that is used again brings nothing of the frame before with it.
        for (int i = 0; i < 3; ++i) expect_same(scene.frame().image, expected);
    }
}

TEST(CompRender, a_frame_into_another_one_leaves_nothing_of_it) {
    CompScene scene;
    scene.add_random(1);
    scene.apply(scene.add_adjustment(), kRedView);
    ViewFrame frame = scene.frame();
    RenderSettings half;
    half.downsample_x = half.downsample_y = 2;
    render_comp(scene.session, scene.comp, half, frame);
    expect_same(frame.image, scene.frame(half).image);
    EXPECT_EQ(frame.effects.size(), 1u);
}

TEST(CompRender, a_failing_effect_hands_its_input_through) {
    for (const char *act : {"fail_render", "fail_pre_render"}) {
        RogueSession rogue;
        rogue.open({80, 60});
        const stage::ViewImage before = render_comp(rogue.session, rogue.comp, {}).image;
        rogue.choose(act);
        const ViewFrame frame = render_comp(rogue.session, rogue.comp, {});
        ASSERT_EQ(frame.effects.size(), 1u);
        EXPECT_NE(frame.effects[0].error, 0) << act;
        expect_same(frame.image, before, act);
        expect_same(before, shown(rogue.picture, Depth::U8, rogue.host().worlds.pool()), act);
    }
}

TEST(CompRender, separate_render_copies_are_renewed) {
    stage::HostOptions options;
    options.separate_render_copy = true;
    CompScene scene(options);
    const Picture photo = random_picture(1, 96, 160, Depth::U8);
    scene.apply(scene.add(photo), kRedView);
    expect_same(scene.frame().image, shown_in(scene, scene.alone(photo, kRedView)));
}

TEST(CompRender, text_layers_have_no_picture_to_render) {
    CompScene scene;
    scene.add_random(1);
    const LayerId text = scene.project().add_text_layer(scene.comp, 0, "text");
    scene.apply(text, kRedView);
    const ViewFrame frame = scene.frame();
    ASSERT_EQ(frame.effects.size(), 1u);
    EXPECT_TRUE(frame.effects[0].skipped);
    expect_same(frame.image, shown_in(scene, scene.plain()));
    EXPECT_THROW(render_layer(scene.session, text, {}), stage::ProjectError);
}

TEST(CompRender, footage_that_cannot_be_read_is_an_error_until_it_can) {
    CompScene scene;
    const LayerId layer = scene.add_random(1);
    scene.apply(scene.add_adjustment(), kRedView);
    const stage::ViewImage good = scene.frame().image;
    const stage::FrameReader reader = scene.item_of(layer).reader;
    scene.item_of(layer).reader = nullptr;
    EXPECT_THROW(scene.frame(), stage::PictureError);
    scene.item_of(layer).reader = [](std::int64_t) -> Picture {
        throw stage::PictureError("gone.png: cannot be read");
    };
    EXPECT_THROW(scene.frame(), stage::PictureError);
    scene.item_of(layer).reader = reader;
    expect_same(scene.frame().image, good);
}

TEST(CompRender, unknown_comps_and_layers_are_errors) {
    CompScene scene;
    EXPECT_THROW(render_comp(scene.session, 4711, {}), stage::ProjectError);
    EXPECT_THROW(render_layer(scene.session, 4711, {}), stage::ProjectError);
}

TEST(CompRender, a_layer_window_shows_the_layers_own_source_with_its_effects) {
    CompScene scene;
    scene.add_random(1);
    const Picture small = random_picture(2, 90, 80, Depth::U8);
    const LayerId layer = scene.add(small);
    scene.project().layer(layer)->scale = 33;
    scene.project().layer(layer)->opacity = 10;
    scene.project().layer(layer)->flags &= ~stage::layer_flag::kVideoActive;
    scene.apply(layer, kGreenView);
    const ViewFrame frame = render_layer(scene.session, layer, {});
    EXPECT_EQ(frame.effects.size(), 1u);
    expect_same(frame.image, shown_in(scene, scene.alone(small, kGreenView)));
}

}  // namespace
}  // namespace stage_test
