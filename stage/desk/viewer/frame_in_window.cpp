// The frame in the window: plain loops, since it runs at every move of the pointer.
#include <algorithm>
#include <cstddef>

#include "stage/desk/viewer/axis_map.h"
#include "stage/desk/viewer/window_picture.h"

namespace stage {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

std::size_t offset(int x, int y, int width) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

/// Weighted mean of frame rows, byte by byte over `size` bytes; the weights' sum is 256, so 16 bits
/// hold every sum.
void average_rows(const ViewImage &frame, const AxisMap::Span &span, const std::uint16_t *weights,
                  int from_x, std::size_t size, std::uint16_t *sums, std::uint8_t *row) {
    for (int i = 0; i < span.count; ++i) {
        const auto *bytes = reinterpret_cast<const std::uint8_t *>(
            frame.pixels.data() + offset(from_x, span.start + i, frame.width));
        const std::uint16_t weight = weights[i];
        if (i == 0) {
            for (std::size_t k = 0; k < size; ++k) {
                sums[k] = static_cast<std::uint16_t>(bytes[k] * weight);
            }
        } else {
            for (std::size_t k = 0; k < size; ++k) {
                sums[k] = static_cast<std::uint16_t>(sums[k] + bytes[k] * weight);
            }
        }
    }
    for (std::size_t k = 0; k < size; ++k) {
        row[k] = static_cast<std::uint8_t>((sums[k] + 128) >> 8);
    }
}

/// Weighted mean of neighbours in a row; red with blue and green by itself, each with 8 bits of
/// room above it for the weights.
std::uint32_t average_pixels(const std::uint32_t *row, const std::uint16_t *weights, int count) {
    std::uint32_t red_blue = 0x00800080, green = 0x80;
    for (int i = 0; i < count; ++i) {
        red_blue += (row[i] & 0x00FF00FF) * weights[i];
        green += (row[i] >> 8 & 0xFF) * weights[i];
    }
    return kOpaque | (red_blue >> 8 & 0x00FF00FF) | (green & 0xFF00);
}

void write_row(const std::uint32_t *row, const AxisMap &columns, int from_x, std::uint32_t *to) {
    for (const AxisMap::Span &span : columns.spans) {
        const std::uint32_t *pixels = row + (span.start - from_x);
        *to++ = span.count == 1 ? kOpaque | *pixels
                                : average_pixels(pixels, columns.weights_of(span), span.count);
    }
}

/// Fills the part of `window` that shows the frame.
void write_frame(const ViewImage &frame, const AxisMap &columns, const AxisMap &rows,
                 ViewImage &window) {
    const int from_x = columns.spans.front().start;
    const AxisMap::Span &last = columns.spans.back();
    const auto width = static_cast<std::size_t>(last.start + last.count - from_x);
    std::vector<std::uint32_t> mean(width);
    std::vector<std::uint16_t> sums(width * 4);
    const std::uint32_t *shown = nullptr;  // row of window pixels before this one
    int shown_row = -1;
    for (int i = 0; i < rows.size(); ++i) {
        const AxisMap::Span &span = rows.spans[static_cast<std::size_t>(i)];
        std::uint32_t *to =
            window.pixels.data() + offset(columns.first, rows.first + i, window.width);
        if (span.count == 1) {
            if (span.start == shown_row) {
                std::copy(shown, shown + columns.size(), to);
            } else {
                write_row(frame.pixels.data() + offset(from_x, span.start, frame.width), columns,
                          from_x, to);
            }
            shown_row = span.start;
        } else {
            average_rows(frame, span, rows.weights_of(span), from_x, width * 4, sums.data(),
                         reinterpret_cast<std::uint8_t *>(mean.data()));
            write_row(mean.data(), columns, from_x, to);
            shown_row = -1;
        }
        shown = to;
    }
}

bool is_whole(const ViewImage &frame) {
    return frame.width > 0 && frame.height > 0 &&
           frame.pixels.size() >= offset(0, frame.height, frame.width);
}

}  // namespace

ViewImage frame_in_window(const ViewImage &frame, int source_width, int source_height,
                          const Viewport &viewport) {
    ViewImage window;
    window.width = std::max(viewport.width, 0);
    window.height = std::max(viewport.height, 0);
    window.pixels.assign(offset(0, window.height, window.width), kPasteboard);
    const bool whole = is_whole(frame);
    const AxisMap columns =
        axis_map(viewport.pan_x, source_width * viewport.zoom * viewport.stretch, window.width,
                 whole ? frame.width : 0);
    const AxisMap rows = axis_map(viewport.pan_y, source_height * viewport.zoom, window.height,
                                  whole ? frame.height : 0);
    if (columns.size() == 0 || rows.size() == 0) return window;
    if (whole) {
        write_frame(frame, columns, rows, window);
        return window;
    }
    for (int i = 0; i < rows.size(); ++i) {
        std::fill_n(window.pixels.begin() + static_cast<std::ptrdiff_t>(offset(
                                                columns.first, rows.first + i, window.width)),
                    columns.size(), kOpaque);
    }
    return window;
}

}  // namespace stage
