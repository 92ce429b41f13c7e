// The smart-render pair as the host sends it: request, check-outs, worlds, checks of the result.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "stage/command_call.h"
#include "stage/image/picture.h"

namespace stage {

/// What to render, and how the host behaves while it does.
struct RenderSettings {
    std::int64_t frame = 0;
    int downsample_x = 1, downsample_y = 1;  ///< denominators of the resolution, 1..100
    bool high_quality = true;                ///< the layer's quality switch
    /// Region asked for, layer pixels at this resolution; the whole layer when unset.
    std::optional<PF_LRect> request;
    PF_RationalScale original_aspect{1, 1};  ///< pixel aspect of the layer parameter's layer
    // Null worlds handed over with error 0, as real hosts sometimes do.
    bool null_input = false;
    bool null_output = false;
    bool null_original = false;
    bool send_pre_render_twice = false;  ///< a second pre-render before the render is legal
};

/// Outcome of one frame.
struct RenderResult {
    PF_Err error = 0;      ///< of the pre-render or the render
    bool skipped = false;  ///< empty result rectangle: nothing was rendered
    bool escaped = false;
    std::string message;
    PF_LRect result_rect{};
    PF_LRect max_result_rect{};
    bool solid = false;
    Picture picture;     ///< result_rect's pixels; empty on error or when skipped
    double seconds = 0;  ///< wall time inside the plug-in's SMART_RENDER
};

/// Renders one frame of `context.instance`. `input` is the effect's layer at full resolution,
/// `original` the layer parameter's layer or null. `context` brings time, size and aspect; its
/// resolution and quality are set from `settings`. Both commands are sent with the real call order;
/// after them: output fully written, no 16-bit code above 32768, inputs unchanged, rectangle rules.
RenderResult smart_render(CommandCaller &caller, Host &host, CommandContext context,
                          const RenderSettings &settings, const Picture &input,
                          const Picture *original);

/// `picture` at 1/dx × 1/dy resolution: each pixel the mean of its block, sizes rounded up, blocks
/// cut off at the right and bottom edge. 1×1 hands the samples through.
Picture downsampled(const Picture &picture, int dx, int dy);

}  // namespace stage
