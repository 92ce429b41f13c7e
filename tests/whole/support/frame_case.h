// One frame to be compared with the oracle: pictures, values, points, resolution.
//
// The oracle computes everything but the insides of the scope panels: it is handed the panels as
// the plug-in gave them to the compositor, so that frames are compared whole, panels included. What
// the panels show is compared on its own (panel_traces_test.cpp).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "whole/support/flow_fixture.h"

namespace ks::flow {

struct LayerPoint {
    double x = 0, y = 0;  // layer pixels at full resolution
};

struct FrameCase {
    stage::Depth depth = stage::Depth::U8;
    oracle::Image input;
    std::optional<oracle::Image> original;
    // Values; points, resolution, aspect, quality and stacking order are filled in by run().
    oracle::FrameSettings settings;
    LayerPoint monitor_position;
    std::array<LayerPoint, 6> scope_position{};
    SceneOptions scene;
    bool high_quality = true;
    // The instance's flat record, as a project file has it; a new instance's when empty.
    std::vector<std::uint8_t> flat;
};

struct FramePair {
    oracle::FrameResult expected;
    oracle::Image actual;
    std::array<oracle::Image, 6> panels;  // by scope kind, as composited
};

// Writes the positions of the five panels, by kind.
void place_scopes(Flow &flow, const std::array<LayerPoint, 6> &positions);

// Renders the case through plug-in and stage and through the oracle. The stacking order that the
// instance keeps afterwards is compared here.
FramePair run(const FrameCase &frame, stage::HostOptions options = {});

// Equal to the last bit.
void expect_exact(const FrameCase &frame);

// At most `codes` apart at the integer depths, `absolute` at float.
void expect_near(const FrameCase &frame, double codes, double absolute, const char *reason);

}  // namespace ks::flow
