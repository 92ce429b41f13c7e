// Pictures that effects receive, kept from frame to frame: a drag changes none of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>

#include "stage/commands/smart_render.h"
#include "stage/project/composite.h"
#include "stage/project/picture_facts.h"

namespace stage {

/// Keeps what was asked for last. Each question compares everything that its answer depends on (see
/// PictureFacts), so an answer is never out of date, whatever was done to the project: editing,
/// undo, loading, other footage. [host thread]
class InputCache {
  public:
    static constexpr std::size_t kMostEntries = 16;
    static constexpr std::size_t kMostBytes = std::size_t{512} << 20;  ///< beside the newest

    explicit InputCache(BytePool &pool) : pool_(pool) {}

    /// item_picture() in pixels of `depth`. Throws what that does, and keeps nothing then.
    LayerPixels item(const Project &project, ItemId item, std::int64_t frame, Resolution resolution,
                     Depth depth);
    /// composite() in pixels of `depth`; `nothing` when no layer of `part` is drawn.
    LayerPixels stack(const Project &project, const StackPart &part, std::int64_t frame,
                      Resolution resolution, Depth depth);

    /// Pictures made so far.
    std::uint64_t made() const { return made_; }
    void clear() { entries_.clear(); }

  private:
    struct Entry {
        PictureFacts facts;
        Resolution resolution;
        LayerPixels layer;
    };
    template <class Draw>
    LayerPixels find_or_make(PictureFacts facts, Resolution resolution, Depth depth, Draw &&draw);
    void forget_oldest();

    BytePool &pool_;
    std::list<Entry> entries_;  // used last first
    std::uint64_t made_ = 0;
};

}  // namespace stage
