// Pictures kept from frame to frame: never made twice, never out of date.
#include "stage/session/input_cache.h"

#include <functional>

#include "support/stage/comp_scene.h"

namespace stage_test {
namespace {

using stage::Depth;
using stage::LayerId;
using stage::RenderSettings;
using stage::ViewImage;

/// A photograph, a small layer in a nested comp, a solid, and the effect above them.
struct InputCacheTest : testing::Test {
    CompScene scene;
    LayerId photo = scene.add(random_picture(1, 96, 160, Depth::U8), 10);
    LayerId nested = 0, inner = 0, solid = 0, top = 0;
    stage::EffectInstance *effect = nullptr;

    void SetUp() override {
        stage::Project &project = scene.project();
        const stage::ItemId comp = project.add_comp("inner", 40, 50, 1, 1, 10);
        const stage::ItemId source = scene.item_of(photo).id;
        inner = project.add_layer(comp, source, 0, "inner");
        nested = project.add_layer(scene.comp, comp, 0, "nested");
        solid = project.add_layer(
            scene.comp, project.add_solid_item("solid", 20, 20, {1, 0.5, 0.25, 0}), 0, "solid");
        top = scene.add_adjustment();
        effect = &scene.apply(top, 4);
    }
    std::uint64_t made() const { return scene.session.inputs.made(); }

    /// The next frame differs from `before` and is what a cache without any entry gives.
    void expect_renewed(const ViewImage &before, const std::string &what,
                        const RenderSettings &settings = {}) {
        const ViewImage is = scene.frame(settings).image;
        EXPECT_NE(is.pixels, before.pixels) << what;
        scene.session.inputs.clear();
        expect_same(is, scene.frame(settings).image, what);
    }
};

TEST_F(InputCacheTest, a_drag_makes_no_input_anew) {
    scene.frame();
    const std::uint64_t before = made();
    for (int view = 1; view < 8; ++view) {
        scene.set(*effect, "Primary Monitor View", view);
        scene.frame();
    }
    EXPECT_EQ(made(), before);
}

TEST_F(InputCacheTest, the_session_s_own_render_uses_the_same_input) {
    scene.frame();
    const std::uint64_t before = made();
    EXPECT_EQ(scene.session.render(*effect, {}).error, 0);
    EXPECT_EQ(made(), before);
}

TEST_F(InputCacheTest, every_edit_beneath_is_seen) {
    stage::Project &project = scene.project();
    const struct {
        const char *what;
        std::function<void()> edit;
    } edits[] = {
        {"position", [&] { project.layer(solid)->position_x += 3; }},
        {"scale", [&] { project.layer(nested)->scale = 77; }},
        {"opacity", [&] { project.layer(nested)->opacity = 50; }},
        {"video", [&] { project.layer(solid)->flags &= ~stage::layer_flag::kVideoActive; }},
        {"video again", [&] { project.layer(solid)->flags |= stage::layer_flag::kVideoActive; }},
        {"adjustment", [&] { project.layer(solid)->flags |= stage::layer_flag::kAdjustment; }},
        {"no adjustment", [&] { project.layer(solid)->flags &= ~stage::layer_flag::kAdjustment; }},
        {"colour of a solid", [&] { scene.item_of(solid).color[2] = 0.9; }},
        {"a layer inside the nested comp", [&] { project.layer(inner)->position_y += 7; }},
        {"a guide inside the nested comp",
         [&] { project.layer(inner)->flags |= stage::layer_flag::kGuide; }},
        {"no guide", [&] { project.layer(inner)->flags &= ~stage::layer_flag::kGuide; }},
        {"pixel aspect", [&] { scene.item_of(solid).par_num = 2; }},
        {"another source", [&] { project.layer(solid)->source = scene.item_of(photo).id; }},
        {"a new layer", [&] { project.reorder_layer(scene.add_random(5, 30, 30), 1); }},
        {"order", [&] { project.reorder_layer(nested, 1); }},
        {"a removed layer", [&] { project.remove_layer(nested); }},
    };
    for (const auto &[what, edit] : edits) {
        const ViewImage before = scene.frame().image;
        edit();
        expect_renewed(before, what);
    }
}

TEST_F(InputCacheTest, other_footage_under_the_same_item_is_seen) {
    const ViewImage before = scene.frame().image;
    const stage::Picture other = random_picture(99, 96, 160, Depth::U8);
    scene.item_of(photo).reader = [other](std::int64_t) { return other; };
    expect_renewed(before, "replaced footage");
}

TEST_F(InputCacheTest, undo_brings_the_earlier_picture_back) {
    const ViewImage before = scene.frame().image;
    stage::Project &project = scene.project();
    const stage::ProjectData data = project.data();
    project.layer(solid)->position_x += 9;
    project.item(scene.item_of(solid).id)->color = {1, 0, 0, 1};
    expect_renewed(before, "edited");
    const ViewImage edited = scene.frame().image;
    project.restore(data);
    expect_renewed(edited, "restored");
    expect_same(scene.frame().image, before);
}

TEST_F(InputCacheTest, depth_resolution_and_time_are_part_of_the_question) {
    const ViewImage before = scene.frame().image;
    scene.item_of(photo).reader = [](std::int64_t frame) {
        return random_picture(static_cast<std::uint32_t>(frame) + 1, 96, 160, Depth::U16);
    };
    RenderSettings later;
    later.frame = 3;
    expect_renewed(before, "frame 3", later);
    RenderSettings half;
    half.downsample_x = 2;
    expect_renewed(before, "half", half);
    const ViewImage first = scene.frame().image;
    const std::uint64_t made_at_8 = made();
    scene.session.options().depth = Depth::U16;
    scene.frame();
    EXPECT_GT(made(), made_at_8);
    scene.session.options().depth = Depth::U8;
    expect_same(scene.frame().image, first);
}

TEST_F(InputCacheTest, a_still_is_the_same_at_every_frame) {
    scene.item_of(photo).frames = 1;
    scene.frame();
    const std::uint64_t before = made();
    RenderSettings later;
    later.frame = 5;
    scene.frame(later);
    EXPECT_EQ(made(), before);
}

TEST_F(InputCacheTest, footage_outside_its_duration_is_transparent) {
    RenderSettings later;
    later.frame = 9;
    const ViewImage last = scene.frame(later).image;
    later.frame = 10;
    expect_renewed(last, "after the end", later);
    const std::uint64_t before = made();
    later.frame = 11;
    scene.frame(later);
    EXPECT_EQ(made(), before) << "one frame without a picture is like another";
}

TEST_F(InputCacheTest, only_the_newest_pictures_are_kept) {
    stage::BytePool &pool = scene.pool();
    stage::InputCache cache(pool);
    const stage::ItemId item = scene.item_of(photo).id;
    const auto ask = [&](std::int64_t frame) {
        cache.item(scene.project(), item, frame % 10, {1 + static_cast<int>(frame) / 10, 1},
                   Depth::U8);
    };
    for (std::int64_t i = 0; i <= std::int64_t{stage::InputCache::kMostEntries}; ++i) ask(i);
    EXPECT_EQ(cache.made(), stage::InputCache::kMostEntries + 1);
    ask(1);
    EXPECT_EQ(cache.made(), stage::InputCache::kMostEntries + 1) << "still there";
    ask(0);
    EXPECT_EQ(cache.made(), stage::InputCache::kMostEntries + 2) << "the oldest was given up";
}

TEST_F(InputCacheTest, an_answer_outlives_its_entry_and_stays_as_it_is) {
    stage::LayerPixels kept =
        scene.session.inputs.item(scene.project(), scene.item_of(photo).id, 0, {}, Depth::U8);
    const std::uint8_t code = kept.pixels.data.get()[5];
    stage::LayerPixels own = kept;
    own.pixels.writable(scene.pool());
    own.pixels.data.get()[5] = static_cast<std::uint8_t>(code + 1);
    EXPECT_EQ(kept.pixels.data.get()[5], code);
    scene.session.inputs.clear();
    EXPECT_EQ(kept.pixels.data.get()[5], code);
    EXPECT_EQ(kept.full_width, 96);
    EXPECT_TRUE(kept.opaque);
    EXPECT_FALSE(kept.nothing);
}

}  // namespace
}  // namespace stage_test
