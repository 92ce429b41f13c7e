#include "whole/support/panel_capture.h"

#include <utility>

#include "hostapi/suite_names.h"

namespace ks::flow {
namespace {

template <class Suite>
const Suite *held(Flow &flow, const char *name, int number) {
    bool refused = false;
    const void *table = flow.host().suites.acquire(name, number, &refused);
    flow.host().suites.release(name, number);
    return static_cast<const Suite *>(table);
}

}  // namespace

PanelCapture *&PanelCapture::current() {
    static PanelCapture *capture = nullptr;
    return capture;
}

PanelCapture::PanelCapture(Flow &flow)
    : flow_(flow),
      host_worlds_(held<PF_WorldSuite2>(flow, kPFWorldSuite, kPFWorldSuiteVersion2)),
      host_transform_(held<PF_WorldTransformSuite1>(flow, kPFWorldTransformSuite,
                                                    kPFWorldTransformSuiteVersion1)),
      host_iterate_(held<AEGP_IterateSuite1>(flow, kAEGPIterateSuite, kAEGPIterateSuiteVersion1)) {
    current() = this;
    iterate_ = *host_iterate_;
    iterate_.AEGP_IterateGeneric = [](A_long count, void *refcon,
                                      A_Err (*f)(void *, A_long, A_long, A_long)) {
        const A_Err error = current()->host_iterate_->AEGP_IterateGeneric(count, refcon, f);
        current()->iterated();
        return error;
    };
    flow_.host().suites.add(kAEGPIterateSuite, kAEGPIterateSuiteVersion1, &iterate_);
    worlds_ = *host_worlds_;
    worlds_.PF_NewWorld = [](PF_ProgPtr ref, A_long width, A_long height, PF_Boolean clear,
                             PF_PixelFormat format, PF_EffectWorld *world) {
        const PF_Err error =
            current()->host_worlds_->PF_NewWorld(ref, width, height, clear, format, world);
        if (error == 0) current()->made(*world);
        return error;
    };
    transform_ = *host_transform_;
    transform_.transfer_rect = [](PF_ProgPtr ref, PF_Quality quality, PF_ModeFlags flags,
                                  PF_Field field, const PF_Rect *rect, const PF_EffectWorld *source,
                                  const PF_CompositeMode *mode, const PF_MaskWorld *mask, A_long x,
                                  A_long y, PF_EffectWorld *to) {
        current()->composited(*source);
        return current()->host_transform_->transfer_rect(ref, quality, flags, field, rect, source,
                                                         mode, mask, x, y, to);
    };
    flow_.host().suites.add(kPFWorldSuite, kPFWorldSuiteVersion2, &worlds_);
    flow_.host().suites.add(kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1, &transform_);
}

PanelCapture::~PanelCapture() {
    flow_.host().suites.add(kPFWorldSuite, kPFWorldSuiteVersion2, host_worlds_);
    flow_.host().suites.add(kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1,
                            host_transform_);
    flow_.host().suites.add(kAEGPIterateSuite, kAEGPIterateSuiteVersion1, host_iterate_);
    current() = nullptr;
}

void PanelCapture::begin(std::vector<int> kinds) {
    kinds_ = std::move(kinds);
    made_ = 0;
    panel_of_.clear();
    panels = {};
    traces = {};
}

void PanelCapture::made(const PF_EffectWorld &world) {
    if (made_ < kinds_.size()) panel_of_[world.data] = {kinds_[made_++], world};
}

void PanelCapture::composited(const PF_EffectWorld &world) {
    const auto found = panel_of_.find(world.data);
    if (found == panel_of_.end()) return;
    panels[static_cast<std::size_t>(found->second.kind)] = copy_of(world);
}

void PanelCapture::iterated() {
    for (const auto &[pixels, panel] : panel_of_) {
        traces[static_cast<std::size_t>(panel.kind)] = copy_of(panel.world);
    }
}

oracle::Image PanelCapture::copy_of(const PF_EffectWorld &world) const {
    const stage::World *held_world = flow_.host().worlds.find(&world);
    if (held_world == nullptr) {
        ADD_FAILURE() << "a panel is no world of the host's";
        return {};
    }
    return to_image(stage::world_picture(*held_world), held_world->depth);
}

std::vector<int> panel_kinds(const oracle::FrameSettings &settings, int width, int height) {
    std::vector<int> kinds;
    for (const oracle::PanelSize &panel : oracle::panel_sizes(settings, width, height)) {
        // A panel without pixels at this resolution is not made at all.
        if (panel.width > 0 && panel.height > 0) kinds.push_back(panel.kind);
    }
    return kinds;
}

oracle::Image frame_with_panels(Flow &flow, const oracle::FrameSettings &settings, int width,
                                int height, std::array<oracle::Image, 6> &panels,
                                const stage::RenderSettings &render,
                                std::array<oracle::Image, 6> *traces) {
    PanelCapture capture(flow);
    capture.begin(panel_kinds(settings, width, height));
    const oracle::Image frame = flow.frame(render);
    panels = std::move(capture.panels);
    if (traces != nullptr) *traces = std::move(capture.traces);
    for (const oracle::PanelSize &size : oracle::panel_sizes(settings, width, height)) {
        const oracle::Image &panel = panels[static_cast<std::size_t>(size.kind)];
        if (panel.width == 0) continue;
        EXPECT_EQ(panel.width, size.width) << "kind " << size.kind;
        EXPECT_EQ(panel.height, size.height) << "kind " << size.kind;
    }
    return frame;
}

}  // namespace ks::flow
