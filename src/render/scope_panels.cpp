#include "render/scope_panels.h"

#include "geometry/scope_panel.h"
#include "host/host_world.h"

namespace ks {

void ScopePanels::create(ErrorChain &chain, const Frame &frame, const RenderSettings &settings) {
    set_.switches = settings.switches;
    set_.slice_fraction = settings.slice_fraction;
    set_.output_width = frame.output->width;
    const double aspect = scope_aspect(settings.scopes_aspect, size_of(*frame.output), frame.scale);
    for (const ScopeKind kind : kScopeWalkOrder) {
        if (!settings.shows(kind)) continue;
        set_.kinds[static_cast<std::size_t>(set_.count++)] = kind;
        chain.step([&] { return create_panel(frame, settings, aspect, kind); });
        if (kind == ScopeKind::kHistogram) chain.step([&] { return create_bins(frame); });
    }
}

PF_Err ScopePanels::create_panel(const Frame &frame, const RenderSettings &settings, double aspect,
                                 ScopeKind kind) {
    const std::size_t slot = scope_slot(kind);
    const IntSize size = scope_panel_size(kScopeTable[slot].size_rule, settings.scope_sizes[slot],
                                          aspect, frame.scale);
    // Legal settings reach this at extreme downsampling; asking the host for it would fail the
    // frame over a scope that cannot show anything.
    if (size.width <= 0 || size.height <= 0) return PF_Err_NONE;
    const PF_Err error =
        panels_[slot].create(frame.worlds, frame.in_data->effect_ref, size, true, frame.format);
    set_.panels[slot] = panels_[slot].get();
    return error;
}

PF_Err ScopePanels::create_bins(const Frame &frame) {
    PF_HandleSuite1 &handles = frame.suites.handle();
    bins_.emplace(handles, kHistogramBinBytes);
    if (bins_->get() == nullptr) return PF_Err_OUT_OF_MEMORY;
    bins_lock_.emplace(handles, bins_->get());
    set_.histogram_bins = bins_lock_->get();
    return set_.histogram_bins == nullptr ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
}

PF_Err ScopePanels::dispose(ScopeKind kind) {
    const std::size_t slot = scope_slot(kind);
    set_.panels[slot] = nullptr;
    return panels_[slot].close();
}

void ScopePanels::close(ErrorChain &chain) {
    for (const ScopeKind kind : kScopeWalkOrder) {
        chain.always([&] { return dispose(kind); });
    }
    set_.histogram_bins = nullptr;
    bins_lock_.reset();
    bins_.reset();
}

}  // namespace ks
