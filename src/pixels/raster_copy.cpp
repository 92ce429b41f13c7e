#include "pixels/raster_copy.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstring>

namespace ks::draw {
namespace {

constexpr std::int64_t kLanes = 4;  // pixels handled at a time: one register of raster pixels

__m128i load(const void *from) {
    return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

void store(void *to, __m128i value) {
    _mm_storeu_si128(static_cast<__m128i *>(to), value);
}

// Four pixels of bytes: alpha first to alpha last, as one rotation of each 32-bit lane.
__m128i alpha_last(__m128i argb) {
    return _mm_or_si128(_mm_srli_epi32(argb, 8), _mm_slli_epi32(argb, 24));
}

// And back, with full alpha in place of what was there.
__m128i opaque_alpha_first(__m128i rgba) {
    return _mm_or_si128(_mm_slli_epi32(rgba, 8), _mm_set1_epi32(0xFF));
}

// Four pixels of a world, as bytes, alpha first.
__m128i to_bytes(const Pixel8 *from) {
    return load(from);
}

// (c * 510) >> 16 is trunc(c * 255 / 32768) for every 16-bit c: the single-precision product is
// exact, having at most 24 bits.
__m128i to_bytes(const Pixel16 *from) {
    const __m128i factor = _mm_set1_epi16(510);
    const __m128i low = _mm_set1_epi16(0xFF);  // packs without saturating
    const __m128i first = _mm_mulhi_epu16(load(from), factor);
    const __m128i second = _mm_mulhi_epu16(load(from + 2), factor);
    return _mm_packus_epi16(_mm_and_si128(first, low), _mm_and_si128(second, low));
}

// One pixel as the low 8 bits of trunc(min(c * 255, 255)). minps answers its second operand when
// one is NaN, so a NaN stays one, and truncates to 0x80000000, as does everything below 32 bits.
__m128i to_codes(const PixelF *from) {
    const __m128 full = _mm_set1_ps(255.0f);
    const __m128 channels = _mm_castsi128_ps(load(from));
    const __m128 clamped = _mm_min_ps(full, _mm_mul_ps(channels, full));
    return _mm_and_si128(_mm_cvttps_epi32(clamped), _mm_set1_epi32(0xFF));
}

__m128i to_bytes(const PixelF *from) {
    const __m128i first = _mm_packs_epi32(to_codes(from), to_codes(from + 1));
    const __m128i second = _mm_packs_epi32(to_codes(from + 2), to_codes(from + 3));
    return _mm_packus_epi16(first, second);
}

// Bytes, alpha first, as four pixels of a world. A full byte is exactly full scale at each depth.
void from_bytes(__m128i bytes, Pixel8 *to) {
    store(to, bytes);
}

// b * 32768 / 255 = b * 128.5 + b / 510: truncated, half of b * 257, and one more for 255.
__m128i to_16bit(__m128i doubled) {
    const __m128i full = _mm_cmpeq_epi16(doubled, _mm_set1_epi16(-1));
    return _mm_sub_epi16(_mm_srli_epi16(doubled, 1), full);
}

void from_bytes(__m128i bytes, Pixel16 *to) {
    store(to, to_16bit(_mm_unpacklo_epi8(bytes, bytes)));
    store(to + 2, to_16bit(_mm_unpackhi_epi8(bytes, bytes)));
}

void store_unit(__m128i codes, PixelF *to) {
    const __m128 scale = _mm_set1_ps(PixelTraits<Pixel8>::kToUnit);
    store(to, _mm_castps_si128(_mm_mul_ps(_mm_cvtepi32_ps(codes), scale)));
}

void from_bytes(__m128i bytes, PixelF *to) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i first = _mm_unpacklo_epi8(bytes, zero);
    const __m128i second = _mm_unpackhi_epi8(bytes, zero);
    store_unit(_mm_unpacklo_epi16(first, zero), to);
    store_unit(_mm_unpackhi_epi16(first, zero), to + 1);
    store_unit(_mm_unpacklo_epi16(second, zero), to + 2);
    store_unit(_mm_unpackhi_epi16(second, zero), to + 3);
}

// A row into the raster. What is left over behind whole registers goes through a full one.
template <class P>
void row_to_raster(const P *from, std::uint8_t *to, std::int64_t width) {
    std::int64_t x = 0;
    for (; x + kLanes <= width; x += kLanes) store(to + x * 4, alpha_last(to_bytes(from + x)));
    if (x == width) return;
    const auto rest = static_cast<std::size_t>(width - x);
    P pixels[kLanes] = {};
    std::uint8_t bytes[kLanes * 4];
    std::memcpy(pixels, from + x, rest * sizeof(P));
    store(bytes, alpha_last(to_bytes(pixels)));
    std::memcpy(to + x * 4, bytes, rest * 4);
}

template <class P>
void row_from_raster(const std::uint8_t *from, P *to, std::int64_t width) {
    std::int64_t x = 0;
    for (; x + kLanes <= width; x += kLanes) {
        from_bytes(opaque_alpha_first(load(from + x * 4)), to + x);
    }
    if (x == width) return;
    const auto rest = static_cast<std::size_t>(width - x);
    std::uint8_t bytes[kLanes * 4] = {};
    P pixels[kLanes];
    std::memcpy(bytes, from + x * 4, rest * 4);
    from_bytes(opaque_alpha_first(load(bytes)), pixels);
    std::memcpy(to + x, pixels, rest * sizeof(P));
}

bool has_pixels(const WorldView &world) {
    return world.width > 0 && world.height > 0;
}

void fill_raster(const WorldView &world, std::uint8_t *raster, std::uint8_t alpha) {
    const std::uint8_t pixel[4] = {0, 0, 0, alpha};
    const std::int64_t pixels = std::int64_t{world.width} * world.height;
    for (std::int64_t i = 0; i < pixels; ++i) std::memcpy(raster + i * 4, pixel, sizeof pixel);
}

}  // namespace

std::int32_t copy_to_raster(FormatCode format, const WorldView &world, std::uint8_t *raster) {
    const bool readable = world.contains(0, 0);
    const std::int32_t result = visit_format(format, [&](auto pixel) {
        using P = decltype(pixel);
        const std::int64_t stride = std::int64_t{world.width} * 4;
        for (std::int64_t y = 0; readable && y < world.height; ++y) {
            row_to_raster(world.pixel<const P>(0, y), raster + y * stride, world.width);
        }
        return 0;
    });
    if (!has_pixels(world)) return result;
    if (result != 0) {
        fill_raster(world, raster, 255);
    } else if (!readable) {
        fill_raster(world, raster, 0);
    }
    return result;
}

std::int32_t copy_from_raster(FormatCode format, const std::uint8_t *raster,
                              const WorldView &world) {
    return visit_format(format, [&](auto pixel) {
        using P = decltype(pixel);
        if (!world.contains(0, 0)) return 0;
        const std::int64_t stride = std::int64_t{world.width} * 4;
        for (std::int64_t y = 0; y < world.height; ++y) {
            row_from_raster(raster + y * stride, world.pixel<P>(0, y), world.width);
        }
        return 0;
    });
}

}  // namespace ks::draw
