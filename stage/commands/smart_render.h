// The smart-render pair as the host sends it: request, check-outs, worlds, checks of the result.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "stage/commands/command_call.h"
#include "stage/image/picture.h"
#include "stage/pixels/host_pixels.h"
#include "stage/project/resolution.h"

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
    HostPixels pixels;   ///< result_rect's pixels; empty on error, when skipped and without output
    Picture picture;     ///< the same as samples: Session::render fills it in
    double seconds = 0;  ///< wall time inside the plug-in's SMART_RENDER
};

/// A layer as the effects that use it find it.
struct LayerPixels {
    HostPixels pixels;  ///< at the resolution rendered at, in the depth of the project
    int full_width = 0, full_height = 0;  ///< at full resolution
    std::optional<bool> opaque;           ///< every pixel; unset while nobody has looked
    bool nothing = false;  ///< nothing is there at all: check-outs give empty rectangles

    /// Looks where nobody has.
    bool is_opaque() {
        if (!opaque) opaque = stage::is_opaque(pixels.view());
        return *opaque;
    }
};

/// Renders one frame of `context.instance`. `input` is the effect's layer, `original` the layer
/// parameter's layer or null; both are reduced already, and looked at for opacity where that is
/// unset. `context` brings time, size and aspect; its resolution and quality are set from
/// `settings`. Both commands are sent with the real call order; after them: output fully written,
/// no 16-bit code above 32768, inputs unchanged, rectangle rules.
RenderResult smart_render(CommandCaller &caller, Host &host, CommandContext context,
                          const RenderSettings &settings, LayerPixels &input,
                          LayerPixels *original);

}  // namespace stage
