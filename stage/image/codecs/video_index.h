// Which moment each frame of a video stream is shown at.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "stage/image/codecs/libav.h"

namespace stage {

// Built from the packets themselves, since headers only estimate how many frames there are, and a
// file that is cut off has fewer than its header says.
class VideoIndex {
  public:
    // Reads `file` from its current position to the end; nothing is decoded.
    VideoIndex(AVFormatContext &file, int stream);

    // False when some packets do not say when they are shown, as in AVI files whose frames are
    // stored out of order. Frames are then known only by counting them from the start.
    bool timed() const { return timed_; }

    int frame_count() const { return static_cast<int>(times_.size()); }

    // The time of `frame` in the stream's units; of a file that is not timed, something ascending.
    std::int64_t time(int frame) const { return times_[static_cast<std::size_t>(frame)]; }

    // The frame shown at `time`, when there is one.
    std::optional<int> frame_at(std::int64_t time) const;

    // True when decoding may start anew between the two frames: a key frame lies after `from` and
    // not after `to`. Never in a file that is not timed.
    bool key_frame_between(int from, int to) const;

  private:
    bool timed_ = true;
    std::vector<std::int64_t> times_;  // ascending
    std::vector<std::int64_t> keys_;   // ascending
};

}  // namespace stage
