// Conversions of one pixel between the three depths. [host thread] [worker]
//
// The truncations are defined as x86-64's cvttss2si and cvttps2dq define them, for every input
// including NaN, infinities and values beyond 32 bits, where a C++ cast would be undefined. The
// instructions are used by name (SSE2, part of every x86-64 processor), four channels at a time.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "pixels/pixel_format.h"

namespace ks {

/// Truncates toward zero and keeps the low bits of the 32-bit result: -127.5 becomes 129 in 8 bits.
/// NaN and everything outside 32 bits truncate to 0x80000000, whose low bits are 0.
template <class Channel>
Channel truncate_low_bits(float value) {
    return static_cast<Channel>(static_cast<std::uint32_t>(_mm_cvttss_si32(_mm_set_ss(value))));
}

/// Four channels, alpha first, as lanes.
inline __m128 lanes_of(const Colour &colour) {
    return _mm_setr_ps(colour.alpha, colour.red, colour.green, colour.blue);
}

inline Colour colour_of(__m128 lanes) {
    Colour colour;
    static_assert(sizeof colour == sizeof lanes);
    std::memcpy(&colour, &lanes, sizeof colour);
    return colour;
}

/// The four integer channels of a pixel as 32-bit lanes.
inline __m128i load_codes(const Pixel8 &pixel) {
    std::int32_t bits;
    std::memcpy(&bits, &pixel, sizeof bits);
    const __m128i zero = _mm_setzero_si128();
    return _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(bits), zero), zero);
}
inline __m128i load_codes(const Pixel16 &pixel) {
    std::int64_t bits;
    std::memcpy(&bits, &pixel, sizeof bits);
    return _mm_unpacklo_epi16(_mm_cvtsi64_si128(bits), _mm_setzero_si128());
}

/// The low bits of four 32-bit lanes as a pixel's channels.
inline void store_codes(__m128i codes, Pixel8 &pixel) {
    const __m128i low = _mm_and_si128(codes, _mm_set1_epi32(0xFF));  // packs without saturating
    const __m128i words = _mm_packs_epi32(low, low);
    const std::int32_t bits = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
    std::memcpy(&pixel, &bits, sizeof bits);
}
inline void store_codes(__m128i codes, Pixel16 &pixel) {
    // The low word, sign-extended, is what the signed pack passes through unchanged.
    const __m128i low = _mm_srai_epi32(_mm_slli_epi32(codes, 16), 16);
    const std::int64_t bits = _mm_cvtsi128_si64(_mm_packs_epi32(low, low));
    std::memcpy(&pixel, &bits, sizeof bits);
}

/// Any pixel as four unit-scale lanes: channels times the single-precision 1/255 or 1/32768; float
/// pixels as they are.
template <class P>
__m128 load_lanes(const P &pixel) {
    if constexpr (kIsFloatPixel<P>) {
        return lanes_of(pixel);
    } else {
        return _mm_mul_ps(_mm_cvtepi32_ps(load_codes(pixel)), _mm_set1_ps(PixelTraits<P>::kToUnit));
    }
}

/// Unit-scale lanes as a pixel of type P; unchanged for float pixels. Integer channels are
/// min(value * full scale, full scale), truncated toward zero: only the top is clamped, so negative
/// values wrap into the low bits. NaN, -inf and everything at or below -2^31 give 0, +inf gives
/// full scale.
template <class P>
P store_lanes(__m128 lanes) {
    if constexpr (kIsFloatPixel<P>) {
        return colour_of(lanes);
    } else {
        const __m128 full = _mm_set1_ps(PixelTraits<P>::kFullScale);
        // minps answers its second operand when one is NaN, so a NaN stays one until the cast.
        const __m128 clamped = _mm_min_ps(full, _mm_mul_ps(lanes, full));
        P pixel;
        store_codes(_mm_cvttps_epi32(clamped), pixel);
        return pixel;
    }
}

/// Any pixel as working colour; see load_lanes.
template <class P>
Colour to_colour(const P &pixel) {
    return colour_of(load_lanes(pixel));
}

/// A working colour as a pixel of type P; see store_lanes.
template <class P>
P from_colour(const Colour &colour) {
    return store_lanes<P>(lanes_of(colour));
}

/// 16-bit to 8-bit: channels times 255/32768 (exact in single precision), truncated. Codes above
/// 32768, which the host never makes, go on beyond 255 and keep their low bits.
inline Pixel8 to_8bit(const Pixel16 &pixel) {
    constexpr float k = 0.0077819824f;
    const auto channel = [](std::uint16_t code) {
        return truncate_low_bits<std::uint8_t>(static_cast<float>(code) * k);
    };
    return {channel(pixel.alpha), channel(pixel.red), channel(pixel.green), channel(pixel.blue)};
}

}  // namespace ks
