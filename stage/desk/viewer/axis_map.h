// Which pixels of a frame a row or column of window pixels shows.
#pragma once

#include <cstdint>
#include <vector>

namespace stage {

/// One axis. Window pixels `first` up to, not including, first + spans.size() show the source.
struct AxisMap {
    /// Frame pixels `start` .. start + count - 1, with the weights at `weights`, 256 together.
    struct Span {
        int start = 0;
        int count = 1;
        std::size_t weights = 0;
    };

    int first = 0;
    bool averages = false;  ///< some span has more than one pixel
    std::vector<Span> spans;
    std::vector<std::uint16_t> weights;

    int size() const { return static_cast<int>(spans.size()); }
    const std::uint16_t *weights_of(const Span &span) const {
        return weights.data() + span.weights;
    }
};

/// `frame_size` pixels (0: the spans are all of pixel 0) cover the window from `from` over `length`
/// window pixels; the window has `window_size`. Empty for anything that cannot be shown.
AxisMap axis_map(double from, double length, int window_size, int frame_size);

}  // namespace stage
