#include "stage/pixels/host_pixels.h"

#include <bit>
#include <cstring>
#include <utility>

namespace stage {
namespace {

std::size_t pixel_size(Depth depth) {
    return visit_depth(depth,
                       []<Depth kDepth>() { return sizeof(typename DepthTraits<kDepth>::Pixel); });
}

}  // namespace

PixelView HostPixels::writable(BytePool &pool) {
    if (data.use_count() > 1) {
        HostPixels own = make_host_pixels(width, height, depth, pool);
        copy_rows(view(), own.view());
        *this = std::move(own);
    }
    return view();
}

HostPixels make_host_pixels(int width, int height, Depth depth, BytePool &pool) {
    const std::size_t rowbytes = static_cast<std::size_t>(width) * pixel_size(depth);
    Bytes bytes = pool.take(rowbytes * static_cast<std::size_t>(height));
    HostPixels pixels{width, height, depth, static_cast<std::ptrdiff_t>(rowbytes), nullptr};
    auto give_back = std::move(bytes.get_deleter());
    pixels.data = std::shared_ptr<std::uint8_t>(bytes.release(), std::move(give_back));
    return pixels;
}

HostPixels clear_host_pixels(int width, int height, Depth depth, BytePool &pool) {
    HostPixels pixels = make_host_pixels(width, height, depth, pool);
    std::memset(pixels.data.get(), 0,
                static_cast<std::size_t>(pixels.rowbytes) * static_cast<std::size_t>(height));
    return pixels;
}

HostPixels to_host_pixels(const Picture &picture, Depth depth, BytePool &pool) {
    HostPixels pixels = make_host_pixels(picture.width, picture.height, depth, pool);
    to_rows(picture, depth, pixels.data.get(), pixels.rowbytes);
    return pixels;
}

Picture to_picture(const HostPixels &pixels) {
    return from_rows(pixels.depth, pixels.data.get(), pixels.rowbytes, pixels.width, pixels.height);
}

void copy_rows(const PixelView &from, const PixelView &to) {
    const std::size_t row = static_cast<std::size_t>(from.width) * pixel_size(from.depth);
    for (int y = 0; y < from.height; ++y) {
        std::memcpy(to.row<std::byte>(y), from.row<const std::byte>(y), row);
    }
}

// Rows are looked at to their end: that is quicker than a way out in the middle.
bool opaque_row(const PF_Pixel *row, int width) {
    std::uint32_t all = ~std::uint32_t{0};
    for (int x = 0; x < width; ++x) all &= std::bit_cast<std::uint32_t>(row[x]);
    return std::bit_cast<PF_Pixel>(all).alpha == kWhite8;
}

bool opaque_row(const PF_Pixel16 *row, int width) {
    int translucent = 0;
    for (int x = 0; x < width; ++x) translucent += row[x].alpha >= kWhite16 ? 0 : 1;
    return translucent == 0;
}

bool opaque_row(const PF_PixelFloat *row, int width) {
    int translucent = 0;  // NaN is
    for (int x = 0; x < width; ++x) translucent += row[x].alpha >= 1.0f ? 0 : 1;
    return translucent == 0;
}

bool is_opaque(const PixelView &view) {
    return visit_depth(view.depth, [&]<Depth kDepth>() {
        for (int y = 0; y < view.height; ++y) {
            const auto *row = view.row<const typename DepthTraits<kDepth>::Pixel>(y);
            if (!opaque_row(row, view.width)) return false;
        }
        return true;
    });
}

}  // namespace stage
