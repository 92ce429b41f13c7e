// The three pixel formats of host worlds, their traits, and the one place that tells them apart.
#pragma once

#include <cstdint>
#include <type_traits>

namespace ks {

// Pixels as they lie in memory: alpha, red, green, blue.
struct Pixel8 {
    std::uint8_t alpha, red, green, blue;  ///< full scale 255
};
struct Pixel16 {
    std::uint16_t alpha, red, green, blue;  ///< full scale 32768
};
struct PixelF {
    float alpha, red, green, blue;  ///< nominal full scale 1.0; over- and under-range allowed
};
static_assert(sizeof(Pixel8) == 4 && sizeof(Pixel16) == 8 && sizeof(PixelF) == 16);

/// Working colour: straight alpha, components nominally 0..1.
using Colour = PixelF;

/// All four components times `factor`, alpha too.
constexpr Colour scaled(const Colour &c, float factor) {
    return {c.alpha * factor, c.red * factor, c.green * factor, c.blue * factor};
}

/// A pixel format code: four characters in memory order on a little-endian machine.
using FormatCode = std::int32_t;

constexpr FormatCode format_code(char a, char b, char c, char d) {
    return static_cast<FormatCode>(
        static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b) << 8 |
        static_cast<std::uint32_t>(c) << 16 | static_cast<std::uint32_t>(d) << 24);
}

inline constexpr FormatCode kFormat8 = format_code('a', 'r', 'g', 'b');
inline constexpr FormatCode kFormat16 = format_code('a', 'e', '1', '6');
inline constexpr FormatCode kFormatF = format_code('a', 'e', '3', '2');
/// Placeholder of a format that has not been asked for yet; never a world's format.
inline constexpr FormatCode kFormatInvalid = format_code('b', 'a', 'd', 'f');

/// What everything that takes a format code returns for a code it does not know
/// (PF_Err_BAD_CALLBACK_PARAM).
inline constexpr std::int32_t kUnknownFormatError = 516;

/// Traits per pixel type; empty for any other type, so that an unknown depth does not compile.
template <class P>
struct PixelTraits;

template <>
struct PixelTraits<Pixel8> {
    using Channel = std::uint8_t;
    static constexpr FormatCode kCode = kFormat8;
    static constexpr float kFullScale = 255.0f;
    static constexpr float kToUnit = 0.003921569f;  ///< single-precision 1/255
};

template <>
struct PixelTraits<Pixel16> {
    using Channel = std::uint16_t;
    static constexpr FormatCode kCode = kFormat16;
    static constexpr float kFullScale = 32768.0f;
    static constexpr float kToUnit = 3.0517578e-5f;  ///< 1/32768, exact
};

template <>
struct PixelTraits<PixelF> {
    using Channel = float;
    static constexpr FormatCode kCode = kFormatF;
    static constexpr float kFullScale = 1.0f;
};

template <class P>
inline constexpr bool kIsFloatPixel = std::is_same_v<typename PixelTraits<P>::Channel, float>;

/// Calls `f` with a value-initialised pixel of the type that `code` names (only its type matters)
/// and returns what it returns, an error code. An unknown code returns 516 without calling `f`.
/// [host thread] [worker]
template <class F>
std::int32_t visit_format(FormatCode code, F &&f) {
    switch (code) {
        case kFormat8:
            return f(Pixel8{});
        case kFormat16:
            return f(Pixel16{});
        case kFormatF:
            return f(PixelF{});
        default:
            return kUnknownFormatError;
    }
}

}  // namespace ks
