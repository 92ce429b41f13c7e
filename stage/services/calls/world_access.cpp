#include "stage/services/calls/world_access.h"

namespace stage {

bool view_of(HostCall &call, const PF_EffectWorld *world, const char *role, PixelView &view) {
    Host &host = call.host();
    const World *live = host.worlds.find(world);
    if (live == nullptr) {
        std::string text = std::string(role) + ": ";
        const std::string freed = host.worlds.freed_label(world);
        text += world == nullptr ? "null" : freed.empty() ? "not a world of this host" : freed;
        if (!freed.empty()) text += ", already disposed of";
        call.report("world.dead", std::move(text));
        return false;
    }
    if (world->width < 0 || world->height < 0 || world->width > live->def.width ||
        world->height > live->def.height || world->rowbytes != live->def.rowbytes) {
        call.report("world.record", std::string(role) + ": a record of " + describe_world(world) +
                                        ", " + std::to_string(world->rowbytes) +
                                        " bytes per row, for the world of " + world_label(*live));
        return false;
    }
    view = {reinterpret_cast<std::byte *>(world->data), world->rowbytes, world->width,
            world->height, live->depth};
    return true;
}

bool views_of(HostCall &call, const PF_EffectWorld *src, const PF_EffectWorld *dst,
              PixelView &src_view, PixelView &dst_view) {
    if (!view_of(call, src, "source", src_view)) return false;
    if (!view_of(call, dst, "destination", dst_view)) return false;
    return src_view.depth == dst_view.depth;
}

std::string describe_world(const PF_EffectWorld *world) {
    if (world == nullptr) return "null";
    return std::to_string(world->width) + "x" + std::to_string(world->height);
}

std::string describe_rect(const PF_LRect *rect) {
    if (rect == nullptr) return "all";
    return "[" + std::to_string(rect->left) + "," + std::to_string(rect->top) + "," +
           std::to_string(rect->right) + "," + std::to_string(rect->bottom) + "]";
}

}  // namespace stage
