#include "stage/drawbot/image_layout.h"

#include <algorithm>
#include <cstddef>

namespace stage {
namespace {

constexpr int kMaxSide = 30000;  // as for worlds
constexpr int kOpaque = -1;      // no alpha byte

struct LayoutRow {
    PixelLayout layout;
    int bytes;
    int red, green, blue, alpha;  // place of each byte in a pixel
    bool premultiplied = false;
};
constexpr LayoutRow kLayouts[] = {
    {PixelLayout::k24Rgb, 3, 0, 1, 2, kOpaque},
    {PixelLayout::k24Bgr, 3, 2, 1, 0, kOpaque},
    {PixelLayout::k32Rgb, 4, 1, 2, 3, kOpaque},
    {PixelLayout::k32Bgr, 4, 2, 1, 0, kOpaque},
    {PixelLayout::k32ArgbStraight, 4, 1, 2, 3, 0},
    {PixelLayout::k32ArgbPremultiplied, 4, 1, 2, 3, 0, true},
    {PixelLayout::k32BgraStraight, 4, 2, 1, 0, 3},
    {PixelLayout::k32BgraPremultiplied, 4, 2, 1, 0, 3, true},
};

std::uint32_t straight(std::uint32_t color, std::uint32_t alpha) {
    if (alpha == 0) return 0;
    return std::min(255u, (color * 255 + alpha / 2) / alpha);
}

std::uint32_t pixel_of(const LayoutRow &layout, const std::uint8_t *bytes) {
    const std::uint32_t alpha = layout.alpha == kOpaque ? 255u : bytes[layout.alpha];
    std::uint32_t color[3] = {bytes[layout.red], bytes[layout.green], bytes[layout.blue]};
    if (layout.premultiplied) {
        for (std::uint32_t &value : color) value = straight(value, alpha);
    }
    return alpha << 24 | color[0] << 16 | color[1] << 8 | color[2];
}

}  // namespace

std::optional<DrawImage> image_from_buffer(int width, int height, int row_bytes,
                                           DRAWBOT_PixelLayout layout, const void *data) {
    const auto *const row =
        std::find_if(std::begin(kLayouts), std::end(kLayouts), [&](const LayoutRow &candidate) {
            return static_cast<DRAWBOT_PixelLayout>(candidate.layout) == layout;
        });
    const bool possible = row != std::end(kLayouts) && data != nullptr && width >= 1 &&
                          height >= 1 && width <= kMaxSide && height <= kMaxSide &&
                          row_bytes >= width * row->bytes;
    if (!possible) return std::nullopt;
    DrawImage image{width, height, {}, 1};
    image.argb.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const std::uint8_t *bytes =
            static_cast<const std::uint8_t *>(data) +
            static_cast<std::size_t>(y) * static_cast<std::size_t>(row_bytes);
        for (int x = 0; x < width; ++x, bytes += row->bytes) {
            image.argb.push_back(pixel_of(*row, bytes));
        }
    }
    return image;
}

}  // namespace stage
