#include "stage/services/calls/world_calls.h"

#include <optional>

#include "stage/services/calls/world_access.h"

namespace stage::calls {
namespace {

std::optional<Depth> depth_of(PF_PixelFormat format) {
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        if (pixel_format(depth) == format) return depth;
    }
    return std::nullopt;
}

bool valid_side(A_long side) {
    return side >= 1 && side <= kMaxWorldSide;
}

}  // namespace

std::string describe_request(const WorldRequest &request) {
    const std::optional<Depth> depth = depth_of(request.format);
    return std::to_string(request.width) + "x" + std::to_string(request.height) + " " +
           (depth ? depth_name(*depth) : "unknown format") + (request.clear ? " clear" : "");
}

PF_Err new_world(HostCall &call, const WorldRequest &request, PF_EffectWorld &world) {
    const std::optional<Depth> depth = depth_of(request.format);
    if (!depth || !valid_side(request.width) || !valid_side(request.height)) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    Host &host = call.host();
    const World *made = host.worlds.create_for_plugin(
        request.width, request.height, *depth, request.clear, host.options.worlds, call.command());
    if (made == nullptr) return PF_Err_OUT_OF_MEMORY;
    world = made->def;
    return PF_Err_NONE;
}

PF_Err dispose_world(HostCall &call, PF_ProgPtr, PF_EffectWorld *world) {
    PixelView view;
    if (!view_of(call, world, "world", view)) return PF_Err_BAD_CALLBACK_PARAM;
    World *live = call.host().worlds.find(world);
    if (!live->by_plugin) {
        call.report("world.not_owned",
                    "the plug-in disposes of the host's world of " + world_label(*live));
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    call.host().worlds.destroy(live, call.command());
    return PF_Err_NONE;
}

std::string describe_disposal(PF_ProgPtr, PF_EffectWorld *world) {
    return describe_world(world);
}

}  // namespace stage::calls
