// A span of frame numbers as written on a command line.
#pragma once

#include <cstdint>
#include <string_view>

namespace stage {

// Both ends belong to the range; 0 <= first <= last.
struct FrameRange {
    int first = 0;
    int last = 0;

    std::int64_t count() const { return std::int64_t{last} - first + 1; }
    bool operator==(const FrameRange &) const = default;
};

// Reads "A-B" or "A", decimal and without blanks or signs. Throws PictureError for anything else,
// and when A is greater than B.
FrameRange parse_frame_range(std::string_view text);

}  // namespace stage
