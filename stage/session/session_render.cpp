// Frames of one effect: what goes into it, and its render.
#include <cstring>

#include "hostapi/constants.h"
#include "stage/project/composite.h"
#include "stage/session/session.h"

namespace stage {

void Session::synchronise_render_copy(EffectInstance &instance) {
    if (flatten(instance).error != 0) return;
    const std::vector<std::uint8_t> bytes = sequence_bytes(instance);
    resetup(instance);
    if (instance.render_sequence_data != nullptr) {
        host.handles.dispose(instance.render_sequence_data, "the host");
    }
    instance.render_sequence_data = host.handles.allocate(bytes.size(), "the host");
    std::memcpy(*instance.render_sequence_data, bytes.data(), bytes.size());
    host.handles.set_host_owned(instance.render_sequence_data, true);
    CommandContext context = context_of(instance);
    context.render_copy = true;
    context.in_flags = PF_InFlag_PROJECT_IS_RENDER_ONLY;
    caller.call(PF_Cmd_SEQUENCE_RESETUP, context);
}

const Item *Session::original_item(const EffectInstance &instance) const {
    const Item *chosen = nullptr;
    for (int index = 1; index < plugin.catalog.count(); ++index) {
        const LayerId id = value(instance, index).layer;
        const Layer *layer = id != 0 ? host.project.layer(id) : nullptr;
        if (layer != nullptr && layer->source != 0) chosen = host.project.item(layer->source);
    }
    return chosen;
}

RenderResult Session::render_pixels(EffectInstance &instance, const RenderSettings &asked,
                                    LayerPixels &input) {
    if (host.options.separate_render_copy) synchronise_render_copy(instance);
    RenderSettings settings = asked;
    const Resolution resolution{settings.downsample_x, settings.downsample_y};
    LayerPixels original;
    const Item *item = original_item(instance);
    if (item != nullptr) {
        original =
            inputs.item(host.project, item->id, settings.frame, resolution, host.options.depth);
        settings.original_aspect = {item->par_num, static_cast<A_u_long>(item->par_den)};
    }
    CommandContext context = context_of(instance);
    context.current_time = static_cast<A_long>(settings.frame);
    context.render_copy = host.options.separate_render_copy;
    return smart_render(caller, host, context, settings, input,
                        item != nullptr ? &original : nullptr);
}

RenderResult Session::render(EffectInstance &instance, const RenderSettings &settings) {
    const Project &project = host.project;
    const Layer *layer = project.layer(instance.layer);
    const Item *comp = project.comp_of(instance.layer);
    const Resolution resolution{settings.downsample_x, settings.downsample_y};
    const bool adjustment = layer->has_flag(layer_flag::kAdjustment);
    const Depth depth = host.options.depth;
    LayerPixels input =
        adjustment ? inputs.stack(project, {comp->id, project.index_of(layer->id), false},
                                  settings.frame, resolution, depth)
                   : inputs.item(project, layer->source, settings.frame, resolution, depth);
    input.nothing = false;  // a transparent picture: this is about the effect, not about the comp
    RenderResult result = render_pixels(instance, settings, input);
    if (!result.pixels.empty()) result.picture = to_picture(result.pixels);
    const Item *shown = adjustment ? comp : project.item(layer->source);
    result.picture.pixel_aspect = static_cast<double>(shown->par_num) / shown->par_den;
    return result;
}

}  // namespace stage
