#include "stage/desk/viewer/view_image.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "stage/image/sample_codes.h"
#include "stage/pixels/host_pixels.h"

namespace stage {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000u;

constexpr std::uint32_t shown(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return kOpaque | red << 16 | green << 8 | blue;
}

/// The pixel's bytes in memory order as a number, whatever the machine's.
std::uint32_t packed(const PF_Pixel &pixel) {
    static_assert(sizeof pixel == sizeof(std::uint32_t));
    static_assert(std::endian::native == std::endian::little);
    return std::bit_cast<std::uint32_t>(pixel);
}

std::uint32_t shown_pixel(const PF_Pixel &pixel) {
    const auto over_black = [&](std::uint32_t code) {
        return (code * pixel.alpha * 2 + kWhite8) / (2 * kWhite8);
    };
    return shown(over_black(pixel.red), over_black(pixel.green), over_black(pixel.blue));
}

std::uint32_t shown_pixel(const PF_Pixel16 &pixel) {
    constexpr std::uint64_t kWhite = std::uint64_t{kWhite16} * kWhite16;
    const std::uint64_t alpha = std::min<std::uint64_t>(pixel.alpha, kWhite16);
    const auto over_black = [&](std::uint64_t code) {
        return static_cast<std::uint32_t>(
            (std::min<std::uint64_t>(code, kWhite16) * alpha * kWhite8 * 2 + kWhite) /
            (2 * kWhite));
    };
    return shown(over_black(pixel.red), over_black(pixel.green), over_black(pixel.blue));
}

std::uint32_t shown_pixel(const PF_PixelFloat &pixel) {
    const float alpha = pixel.alpha > 0.0f ? std::min(pixel.alpha, 1.0f) : 0.0f;
    const auto over_black = [&](float value) {
        const float within = value > 0.0f ? std::min(value, 1.0f) : 0.0f;
        return static_cast<std::uint32_t>(code_of(within * alpha, kWhite8));
    };
    return shown(over_black(pixel.red), over_black(pixel.green), over_black(pixel.blue));
}

/// Opaque float rows: all four samples of a pixel alike, as the processor likes it. Rounded as
/// code_of() rounds.
void show_opaque_row(const PF_PixelFloat *row, int width, std::uint32_t *out) {
    constexpr int kBlock = 64;
    for (int begin = 0; begin < width; begin += kBlock) {
        const int count = std::min(kBlock, width - begin);
        std::array<float, kBlock * 4> samples;
        std::memcpy(samples.data(), row + begin, static_cast<std::size_t>(count) * sizeof *row);
        std::array<std::int32_t, kBlock * 4> codes;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count) * 4; ++i) {
            const float above = samples[i] > 0.0f ? samples[i] : 0.0f;
            const float within = above < 1.0f ? above : 1.0f;
            codes[i] = static_cast<std::int32_t>(static_cast<double>(within) * kWhite8 + 0.5);
        }
        for (int x = 0; x < count; ++x) {
            const auto at = static_cast<std::size_t>(x) * 4;
            out[begin + x] = shown(static_cast<std::uint32_t>(codes[at + 1]),
                                   static_cast<std::uint32_t>(codes[at + 2]),
                                   static_cast<std::uint32_t>(codes[at + 3]));
        }
    }
}

void show_opaque_row(const PF_Pixel16 *row, int width, std::uint32_t *out) {
    const auto code = [](std::uint32_t value) {
        return (std::min<std::uint32_t>(value, kWhite16) * (2 * kWhite8) + kWhite16) /
               (2 * kWhite16);
    };
    for (int x = 0; x < width; ++x) {
        out[x] = shown(code(row[x].red), code(row[x].green), code(row[x].blue));
    }
}

template <class Pixel>
void show_each(const Pixel *row, int width, std::uint32_t *out) {
    for (int x = 0; x < width; ++x) out[x] = shown_pixel(row[x]);
}

template <class Pixel>
void show_row(const Pixel *row, int width, std::uint32_t *out) {
    if (opaque_row(row, width)) {
        show_opaque_row(row, width, out);
    } else {
        show_each(row, width, out);
    }
}

/// Opaque 8-bit rows, which nearly all are, only have their bytes put into another order.
void show_row(const PF_Pixel *row, int width, std::uint32_t *out) {
    std::uint32_t alphas = 0xFF;
    for (int x = 0; x < width; ++x) {
        const std::uint32_t pixel = packed(row[x]);
        alphas &= pixel;
        out[x] = shown(pixel >> 8 & 0xFF, pixel >> 16 & 0xFF, pixel >> 24);
    }
    if (alphas != 0xFF) show_each(row, width, out);
}

}  // namespace

void show_over_black(const PixelView &view, ViewImage &image) {
    image.width = view.width;
    image.height = view.height;
    const auto width = static_cast<std::size_t>(view.width);
    image.pixels.resize(width * static_cast<std::size_t>(view.height));
    visit_depth(view.depth, [&]<Depth kDepth>() {
        for (int y = 0; y < view.height; ++y) {
            show_row(view.row<const typename DepthTraits<kDepth>::Pixel>(y), view.width,
                     image.pixels.data() + static_cast<std::size_t>(y) * width);
        }
    });
}

}  // namespace stage
