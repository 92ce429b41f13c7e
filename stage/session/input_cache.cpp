#include "stage/session/input_cache.h"

#include <algorithm>
#include <utility>

namespace stage {
namespace {

std::size_t bytes_of(const HostPixels &pixels) {
    return static_cast<std::size_t>(pixels.rowbytes) * static_cast<std::size_t>(pixels.height);
}

}  // namespace

template <class Draw>
LayerPixels InputCache::find_or_make(PictureFacts facts, Resolution resolution, Depth depth,
                                     Draw &&draw) {
    const auto found = std::ranges::find_if(entries_, [&](const Entry &entry) {
        return entry.resolution == resolution && entry.layer.pixels.depth == depth &&
               entry.facts == facts;
    });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
        return entries_.front().layer;
    }
    ++made_;
    LayerPixels layer;
    layer.pixels = to_host_pixels(draw(), depth, pool_);
    layer.full_width = facts.width;
    layer.full_height = facts.height;
    layer.opaque = is_opaque(layer.pixels.view());
    layer.nothing = facts.kind == ItemKind::kComp && facts.layers.empty();
    entries_.push_front({std::move(facts), resolution, std::move(layer)});
    forget_oldest();
    return entries_.front().layer;
}

LayerPixels InputCache::item(const Project &project, ItemId item, std::int64_t frame,
                             Resolution resolution, Depth depth) {
    return find_or_make(item_facts(project, item, frame), resolution, depth,
                        [&] { return item_picture(project, item, frame, resolution); });
}

LayerPixels InputCache::stack(const Project &project, const StackPart &part, std::int64_t frame,
                              Resolution resolution, Depth depth) {
    return find_or_make(stack_facts(project, part, frame), resolution, depth,
                        [&] { return composite(project, part, frame, resolution); });
}

void InputCache::forget_oldest() {
    std::size_t bytes = 0;
    std::size_t kept = 0;
    for (auto entry = entries_.begin(); entry != entries_.end(); ++kept) {
        bytes += bytes_of(entry->layer.pixels);
        const bool too_much = kept >= kMostEntries || (kept > 0 && bytes > kMostBytes);
        entry = too_much ? entries_.erase(entry) : std::next(entry);
    }
}

}  // namespace stage
