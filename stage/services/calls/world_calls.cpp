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

// 0, or 516 when there is nothing to dispose of.
PF_Err dispose(HostCall &call, const PF_EffectWorld *world) {
    PixelView view;
    if (!view_of(call, world, "world", view)) return PF_Err_BAD_CALLBACK_PARAM;
    World *live = call.host().worlds.find(world);
    if (!live->by_plugin) {
        call.host().strict.report(
            "world.not_owned", call.command(),
            "the plug-in disposes of the host's world of " + world_label(*live));
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    call.host().worlds.destroy(live, call.command());
    return PF_Err_NONE;
}

}  // namespace

PF_Err new_world(const char *name, A_long width, A_long height, bool clear, PF_PixelFormat format,
                 PF_EffectWorld *world) noexcept {
    const std::optional<Depth> depth = depth_of(format);
    return code_call(
        name,
        [&](HostCall &call) {
            call.arguments(std::to_string(width) + "x" + std::to_string(height) + " " +
                           (depth ? depth_name(*depth) : "unknown format") +
                           (clear ? " clear" : ""));
        },
        [&](HostCall &call) -> PF_Err {
            if (world == nullptr || !depth || !valid_side(width) || !valid_side(height)) {
                return PF_Err_BAD_CALLBACK_PARAM;
            }
            Host &host = call.host();
            const World *made = host.worlds.create_for_plugin(width, height, *depth, clear,
                                                              host.options.worlds, call.command());
            if (made == nullptr) return PF_Err_OUT_OF_MEMORY;
            *world = made->def;
            return PF_Err_NONE;
        });
}

PF_Err dispose_world(const char *name, PF_EffectWorld *world) noexcept {
    HostCall call(name);
    try {
        if (call.traced()) call.arguments(describe_world(world));
        const PF_Err error = dispose(call, world);
        return call.result(call.must_fail() ? call.error() : error);
    } catch (const std::exception &) {
        return call.result(PF_Err_OUT_OF_MEMORY);
    }
}

}  // namespace stage::calls
