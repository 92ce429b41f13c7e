// Typed pixels of one depth for the scope loops: read as float, and the additive plot.
#pragma once

#include <limits>
#include <type_traits>

#include "oracle/image.h"

namespace ks::oracle {

template <Depth D>
struct DepthTraits;

template <>
struct DepthTraits<Depth::kByte> {
    using Channel = std::uint8_t;
    static constexpr float kToFloat = 0.003921569f;  // 1/255
    static constexpr float kFull = 255.0f;
    static auto *data(auto &image) { return image.bytes8.data(); }
};

template <>
struct DepthTraits<Depth::kWord> {
    using Channel = std::uint16_t;
    static constexpr float kToFloat = 3.0517578e-5f;  // 1/32768
    static constexpr float kFull = 32768.0f;
    static auto *data(auto &image) { return image.words16.data(); }
};

template <>
struct DepthTraits<Depth::kFloat> {
    using Channel = float;
    static auto *data(auto &image) { return image.floats.data(); }
};

// A picture's pixels by type; the picture must be of depth D and outlive the view.
template <Depth D>
struct TypedPicture {
    using Channel = typename DepthTraits<D>::Channel;

    explicit TypedPicture(Image &image)
        : data(DepthTraits<D>::data(image)), width(image.width), height(image.height) {}

    Channel *data;
    int width;
    int height;
};

template <Depth D>
Colour load_typed(const typename DepthTraits<D>::Channel *pixel) {
    if constexpr (D == Depth::kFloat) {
        return {pixel[0], pixel[1], pixel[2], pixel[3]};
    } else {
        constexpr float kScale = DepthTraits<D>::kToFloat;
        return {static_cast<float>(pixel[0]) * kScale, static_cast<float>(pixel[1]) * kScale,
                static_cast<float>(pixel[2]) * kScale, static_cast<float>(pixel[3]) * kScale};
    }
}

// The component limited to 1.0 and stored, truncated at the integer depths, where the value must
// not be NaN nor below the range of int when scaled.
template <Depth D>
void store_typed(typename DepthTraits<D>::Channel &stored, float value) {
    const float limited = value > 1.0f ? 1.0f : value;
    if constexpr (D == Depth::kFloat) {
        stored = limited;
    } else {
        const float scaled = limited * DepthTraits<D>::kFull;
        stored = static_cast<typename DepthTraits<D>::Channel>(static_cast<int>(scaled));
    }
}

// Adds the colour to pixel (x, y) with every component limited to 1.0, at float too; the new alpha
// is (1 - a) * alpha + a. A pixel outside the picture is left out.
template <Depth D>
void plot_trace(const TypedPicture<D> &picture, int x, int y, const Colour &colour) {
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return;
    auto *pixel = picture.data + (static_cast<std::size_t>(y) * picture.width + x) * 4;
    const Colour below = load_typed<D>(pixel);
    store_typed<D>(pixel[0], (1.0f - colour[0]) * below[0] + colour[0]);
    store_typed<D>(pixel[1], below[1] + colour[1]);
    store_typed<D>(pixel[2], below[2] + colour[2]);
    store_typed<D>(pixel[3], below[3] + colour[3]);
}

// All four components times the factor.
inline Colour times(const Colour &colour, float factor) {
    return {colour[0] * factor, colour[1] * factor, colour[2] * factor, colour[3] * factor};
}

// Truncates toward zero; a value beyond the range of int gives its nearest end. Not for NaN.
inline int truncated(double value) {
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

// Red, green, blue to luma in single precision, left to right.
inline float trace_luma(const Colour &colour, int luma_math) {
    if (luma_math == 2) return 0.2126f * colour[1] + 0.7152f * colour[2] + 0.0722f * colour[3];
    return 0.299f * colour[1] + 0.587f * colour[2] + 0.114f * colour[3];
}

// The row `above` pixels over the bottom line, truncated, `top` at least and else `bottom` at most.
inline int trace_row(double bottom_less_above, int top, int bottom) {
    const int y = truncated(bottom_less_above);
    if (y < top) return top;
    return y < bottom ? y : bottom;
}

// A value above this is over range.
inline constexpr float kOverRange = 1.0001f;

// Calls f with the depth as a std::integral_constant.
template <typename F>
void with_depth(Depth depth, F &&f) {
    if (depth == Depth::kByte) f(std::integral_constant<Depth, Depth::kByte>{});
    if (depth == Depth::kWord) f(std::integral_constant<Depth, Depth::kWord>{});
    if (depth == Depth::kFloat) f(std::integral_constant<Depth, Depth::kFloat>{});
}

}  // namespace ks::oracle
