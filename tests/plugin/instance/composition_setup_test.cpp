#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "instance/sequence.h"
#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

constexpr AEGP_LayerFlags kVideo = AEGP_LayerFlag_VIDEO_ACTIVE;
constexpr AEGP_LayerFlags kAdjustment = kVideo | AEGP_LayerFlag_ADJUSTMENT_LAYER;
constexpr char kWarning[] =
    "Warning: You have applied Kestrel Scopes to a source layer with different dimensions to the "
    "comp.\n\nIt is recommended that you apply Kestrel Scopes to an adjustment layer at the top of "
    "the stack";

class CompositionSetup : public testing::Test {
  protected:
    void apply_to(fake::Layer &layer) {
        project.effect_layer = &layer;
        EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
        EXPECT_EQ(host.calls.misuse, std::vector<std::string>{});
        EXPECT_EQ(host.calls.live_blocks(), 1) << "names and results are freed, the record is not";
        EXPECT_EQ(host.calls.open_locks(), 0);
        EXPECT_EQ(host.suites_held(), 0);
    }
    [[nodiscard]] bool warned() const {
        return (host.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0;
    }
    [[nodiscard]] long position(const std::string &call) const {
        for (std::size_t i = 0; i < host.calls.log.size(); ++i) {
            if (host.calls.log[i] == call) return static_cast<long>(i);
        }
        return -1;
    }

    fake::FakeHost host;
    fake::FakeProject project{host};
};

TEST_F(CompositionSetup, footage_of_another_size_is_warned_about_and_succeeds) {
    for (const auto &[width, height] : {std::pair{1280, 720}, {1920, 720}, {1280, 1080}}) {
        fake::FakeHost small_host;
        fake::FakeProject small(small_host);
        small.effect_layer = &small.add(kVideo, width, height);
        EXPECT_EQ(ks::sequence_setup(&small_host.in, &small_host.out, true), 0);
        EXPECT_STREQ(small_host.out.return_msg, kWarning);
        EXPECT_EQ(small_host.out.out_flags, PF_OutFlag_DISPLAY_ERROR_MESSAGE);
        EXPECT_EQ(small.effect_layer->flags, kVideo) << "the user's layer is not touched";
    }
}

TEST_F(CompositionSetup, footage_of_the_comps_size_is_not_warned_about) {
    apply_to(project.add(kVideo, 1920, 1080));
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_FALSE(warned());
}

TEST_F(CompositionSetup, layer_without_a_source_is_not_warned_about) {
    apply_to(project.add(kVideo, 0, 0));
    EXPECT_FALSE(warned());
}

TEST_F(CompositionSetup, layer_outside_a_composition_is_left_alone) {
    project.has_comp = false;
    apply_to(project.add(kAdjustment, 1280, 720));
    EXPECT_EQ(project.effect_layer->flags, kAdjustment);
    EXPECT_EQ(project.stack.size(), 1u);
    EXPECT_FALSE(warned());
    EXPECT_EQ(project.scripts.size(), 1u) << "an adjustment layer is pinned all the same";
}

TEST_F(CompositionSetup, adjustment_layer_becomes_a_guide_layer_without_a_warning) {
    fake::Layer &layer = project.add(kAdjustment, 1280, 720);
    project.add(kVideo, 1920, 1080);
    apply_to(layer);
    EXPECT_EQ(layer.flags, kAdjustment | AEGP_LayerFlag_GUIDE_LAYER);
    EXPECT_FALSE(warned());
    EXPECT_EQ(project.scripts.size(), 1u);
}

TEST_F(CompositionSetup, adjustment_layer_over_nothing_gets_a_backing_at_the_bottom) {
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    fake::Layer &small = project.add(kVideo, 640, 480);
    apply_to(layer);
    ASSERT_EQ(project.stack.size(), 3u);
    EXPECT_EQ(project.stack[0], &layer);
    EXPECT_EQ(project.stack[1], &small);
    const fake::Layer &backing = *project.stack[2];
    EXPECT_EQ(project.solid_names, std::vector<std::u16string>{u"KSTR_Backing"});
    EXPECT_EQ(backing.source->width, 1920);
    EXPECT_EQ(backing.source->height, 1080);
    EXPECT_EQ(backing.flags, kVideo | AEGP_LayerFlag_LOCKED);
    EXPECT_EQ(small.flags, kVideo) << "the user's layer is not locked";
}

TEST_F(CompositionSetup, backing_is_opaque_black_and_as_long_as_the_comp) {
    apply_to(project.add(kAdjustment, 1920, 1080));
    EXPECT_EQ(project.solid_color.alphaF, 1.0);
    EXPECT_EQ(project.solid_color.redF, 0.0);
    EXPECT_EQ(project.solid_color.greenF, 0.0);
    EXPECT_EQ(project.solid_color.blueF, 0.0);
    EXPECT_EQ(project.solid_length.value, 250);
    EXPECT_EQ(project.solid_length.scale, 25u);
}

TEST_F(CompositionSetup, backing_is_locked_after_everything_else_and_before_the_script) {
    apply_to(project.add(kAdjustment, 1920, 1080));
    EXPECT_LT(position("SetLayerFlag 262144 on"), position("CreateSolidInComp"));
    EXPECT_LT(position("CreateSolidInComp"), position("ReorderLayer 1"));
    EXPECT_LT(position("ReorderLayer 1"), position("SetLayerFlag 32 on"));
    EXPECT_LT(position("SetLayerFlag 32 on"), position("ExecuteScript"));
}

TEST_F(CompositionSetup, full_frame_layer_beneath_is_enough_and_stays_unlocked) {
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    fake::Layer &footage = project.add(kVideo, 4096, 2160);
    apply_to(layer);
    EXPECT_EQ(project.stack.size(), 2u);
    EXPECT_EQ(footage.flags, kVideo);
}

TEST_F(CompositionSetup, layers_that_cannot_serve_as_backing) {
    const struct {
        AEGP_LayerFlags flags;
        A_long width, height;
        const char *why;
    } unfit[] = {
        {0, 1920, 1080, "video off"},
        {kVideo | AEGP_LayerFlag_GUIDE_LAYER, 1920, 1080, "guide layer"},
        {kAdjustment, 1920, 1080, "adjustment layer"},
        {kVideo | AEGP_LayerFlag_NULL_LAYER, 1920, 1080, "null layer"},
        {kVideo, 1919, 1080, "too narrow"},
        {kVideo, 1920, 1079, "too low"},
        {kVideo, 0, 0, "no source"},
    };
    for (const auto &layer : unfit) {
        fake::FakeHost other_host;
        fake::FakeProject other(other_host);
        other.effect_layer = &other.add(kAdjustment, 1920, 1080);
        other.add(layer.flags, layer.width, layer.height);
        EXPECT_EQ(ks::sequence_setup(&other_host.in, &other_host.out, true), 0) << layer.why;
        EXPECT_EQ(other.solid_names.size(), 1u) << layer.why;
    }
}

TEST_F(CompositionSetup, full_frame_layer_above_does_not_count) {
    project.add(kVideo, 1920, 1080);
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    apply_to(layer);
    EXPECT_EQ(project.solid_names.size(), 1u);
}

TEST_F(CompositionSetup, second_instance_reuses_the_backing_of_the_first) {
    fake::Layer &second = project.add(kAdjustment, 1920, 1080);
    fake::Layer &first = project.add(kAdjustment, 1920, 1080);
    project.effect_layer = &first;
    ASSERT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
    host.next_command();
    apply_to(second);
    EXPECT_EQ(project.solid_names.size(), 1u);
    EXPECT_EQ(project.stack.size(), 3u);
}

TEST_F(CompositionSetup, backing_that_lost_its_lock_is_locked_again_in_its_place) {
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    fake::Layer &backing = project.add(0, 640, 480, u"KSTR_Backing");
    project.add(kVideo, 100, 100);
    apply_to(layer);
    EXPECT_EQ(backing.flags, AEGP_LayerFlag_LOCKED) << "hidden by the user: it stays hidden";
    EXPECT_EQ(project.stack[1], &backing);
    EXPECT_TRUE(project.solid_names.empty());
}

TEST_F(CompositionSetup, backing_above_the_effect_moves_to_the_bottom) {
    fake::Layer &backing = project.add(kVideo, 1920, 1080, u"KSTR_Backing");
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    project.add(kVideo, 100, 100);
    apply_to(layer);
    EXPECT_TRUE(project.solid_names.empty());
    EXPECT_EQ(project.stack[2], &backing);
    EXPECT_EQ(backing.flags, kVideo | AEGP_LayerFlag_LOCKED);
}

TEST_F(CompositionSetup, layers_own_name_counts_before_its_sources) {
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    fake::Layer &renamed = project.add(kVideo, 100, 100, u"Dust");
    renamed.source_name = u"KSTR_Backing";
    apply_to(layer);
    EXPECT_EQ(renamed.flags, kVideo) << "renamed by the user, so it is the user's";
    EXPECT_EQ(project.solid_names.size(), 1u);
}

TEST_F(CompositionSetup, names_that_only_begin_alike_are_not_ours) {
    fake::Layer &layer = project.add(kAdjustment, 1920, 1080);
    fake::Layer &longer = project.add(kVideo, 100, 100, u"KSTR_Backing 2");
    fake::Layer &shorter = project.add(kVideo, 100, 100, u"KSTR_Back");
    apply_to(layer);
    EXPECT_EQ(longer.flags, kVideo);
    EXPECT_EQ(shorter.flags, kVideo);
    EXPECT_EQ(project.solid_names.size(), 1u);
}

}  // namespace
