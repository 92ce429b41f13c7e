// The scope panels of a frame as the plug-in hands them to the host's compositor: whole, whatever
// part of them the frame shows.
#pragma once

#include <array>
#include <map>
#include <vector>

#include "hostapi/aegp_service_suites.h"
#include "hostapi/pf_suites.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {

// While it lives, the session's "PF World Suite", "PF World Transform Suite" and "AEGP Iterate
// Suite" are watched: the first worlds that a frame makes are its panels, and each is copied after
// every generic iteration, when the sampled traces stand in it and no graticule, and when it is
// composited. One lives at a time.
class PanelCapture {
  public:
    explicit PanelCapture(Flow &flow);
    ~PanelCapture();
    PanelCapture(const PanelCapture &) = delete;
    PanelCapture &operator=(const PanelCapture &) = delete;

    // Forgets the panels so far; the next frame makes panels of these kinds, in this order.
    void begin(std::vector<int> kinds);

    // By scope kind; no pixels where the panel was not composited.
    std::array<oracle::Image, 6> panels;
    // The panels after the sampling pass; of use for the waveform, the parade and the vectorscope.
    std::array<oracle::Image, 6> traces;

  private:
    static PanelCapture *&current();
    void made(const PF_EffectWorld &world);
    void composited(const PF_EffectWorld &world);
    void iterated();
    oracle::Image copy_of(const PF_EffectWorld &world) const;

    Flow &flow_;
    PF_WorldSuite2 worlds_{};
    PF_WorldTransformSuite1 transform_{};
    AEGP_IterateSuite1 iterate_{};
    const PF_WorldSuite2 *host_worlds_ = nullptr;
    const PF_WorldTransformSuite1 *host_transform_ = nullptr;
    const AEGP_IterateSuite1 *host_iterate_ = nullptr;
    std::vector<int> kinds_;
    std::size_t made_ = 0;
    struct Panel {
        int kind = 0;
        PF_EffectWorld world{};
    };
    std::map<const void *, Panel> panel_of_;  // by pixels
};

// The panels that a frame of `settings` and that size makes, in walk order.
std::vector<int> panel_kinds(const oracle::FrameSettings &settings, int width, int height);

// Renders a frame and keeps its panels and, unless it is null, the traces in them.
oracle::Image frame_with_panels(Flow &flow, const oracle::FrameSettings &settings, int width,
                                int height, std::array<oracle::Image, 6> &panels,
                                const stage::RenderSettings &render = {},
                                std::array<oracle::Image, 6> *traces = nullptr);

}  // namespace ks::flow
