// Pixels of a world as plain memory, and rectangles in it. No host services.
#pragma once

#include <cstddef>
#include <cstdint>

#include "hostapi/effect_types.h"
#include "stage/image/picture.h"

namespace stage {

/// Rows of alpha, red, green, blue pixels: 4, 8 or 16 bytes each, pixel (x, y) at
/// base + y * rowbytes + x * size. Row arithmetic is 64-bit; `rowbytes` may be negative. Does not
/// own the memory. `base` and `rowbytes` are aligned to one channel.
struct PixelView {
    std::byte *base = nullptr;
    std::ptrdiff_t rowbytes = 0;
    int width = 0;
    int height = 0;
    Depth depth = Depth::U8;

    /// Start of row y. `Pixel` must fit the depth.
    template <class Pixel>
    Pixel *row(int y) const {
        return reinterpret_cast<Pixel *>(base + static_cast<std::ptrdiff_t>(y) * rowbytes);
    }
};

/// Left, top inclusive, right, bottom exclusive. 64-bit, so that no sum of two 32-bit coordinates
/// overflows.
struct Box {
    std::int64_t left = 0, top = 0, right = 0, bottom = 0;

    bool empty() const { return left >= right || top >= bottom; }
    std::int64_t width() const { return right - left; }
    std::int64_t height() const { return bottom - top; }
    Box shifted(std::int64_t dx, std::int64_t dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    bool operator==(const Box &) const = default;
};

inline Box intersect(const Box &a, const Box &b) {
    return {a.left > b.left ? a.left : b.left, a.top > b.top ? a.top : b.top,
            a.right < b.right ? a.right : b.right, a.bottom < b.bottom ? a.bottom : b.bottom};
}
inline Box bounds(const PixelView &view) {
    return {0, 0, view.width, view.height};
}
/// A null rectangle means the whole of `view`.
inline Box box_of(const PF_LRect *rect, const PixelView &view) {
    if (rect == nullptr) return bounds(view);
    return {rect->left, rect->top, rect->right, rect->bottom};
}

/// Traits of the three depths. Unknown depths do not compile.
template <Depth kDepth>
struct DepthTraits;

template <>
struct DepthTraits<Depth::U8> {
    using Pixel = PF_Pixel;
    using Channel = A_u_char;
    static constexpr double kWhite = kWhite8;
    static constexpr bool kInteger = true;
};
template <>
struct DepthTraits<Depth::U16> {
    using Pixel = PF_Pixel16;
    using Channel = A_u_short;
    static constexpr double kWhite = kWhite16;
    static constexpr bool kInteger = true;
};
template <>
struct DepthTraits<Depth::Float> {
    using Pixel = PF_PixelFloat;
    using Channel = float;
    static constexpr double kWhite = 1.0;
    static constexpr bool kInteger = false;
};

/// A value in codes of the depth as a channel: integer depths round to the nearest code, halves up,
/// and clamp to 0..white (NaN gives 0); float keeps everything.
template <Depth kDepth>
typename DepthTraits<kDepth>::Channel to_channel(double value) {
    using Traits = DepthTraits<kDepth>;
    if constexpr (Traits::kInteger) {
        if (!(value > 0)) return 0;
        if (value >= Traits::kWhite) return static_cast<typename Traits::Channel>(Traits::kWhite);
        return static_cast<typename Traits::Channel>(static_cast<int>(value + 0.5));
    } else {
        return static_cast<float>(value);
    }
}

/// Calls `f.template operator()<kDepth>()` for the depth.
template <class F>
decltype(auto) visit_depth(Depth depth, F &&f) {
    switch (depth) {
        case Depth::U8:
            return f.template operator()<Depth::U8>();
        case Depth::U16:
            return f.template operator()<Depth::U16>();
        case Depth::Float:
            break;
    }
    return f.template operator()<Depth::Float>();
}

}  // namespace stage
