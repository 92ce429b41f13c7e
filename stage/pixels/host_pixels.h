// A picture in the host's own pixels, shared between those who read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "stage/image/picture.h"
#include "stage/pixels/byte_pool.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// Rows of pixels as the worlds of that depth hold them. Copies share the memory; writable() makes
/// an own copy first where there are others. Nothing when `data` is null. [host thread]
struct HostPixels {
    int width = 0, height = 0;
    Depth depth = Depth::U8;
    std::ptrdiff_t rowbytes = 0;
    std::shared_ptr<std::uint8_t> data;  ///< pixel (0, 0); keeps the memory

    bool empty() const { return data == nullptr; }
    /// For reading alone.
    PixelView view() const {
        return {reinterpret_cast<std::byte *>(data.get()), rowbytes, width, height, depth};
    }
    /// For writing: nobody else sees it.
    PixelView writable(BytePool &pool);
};

/// Pixels with undefined contents, rows without padding. Sides must be 1..kMaxPictureSide.
HostPixels make_host_pixels(int width, int height, Depth depth, BytePool &pool);
/// Transparent black.
HostPixels clear_host_pixels(int width, int height, Depth depth, BytePool &pool);
/// `picture` in codes of the depth; see to_rows.
HostPixels to_host_pixels(const Picture &picture, Depth depth, BytePool &pool);
/// The reverse; see from_rows.
Picture to_picture(const HostPixels &pixels);

/// Copies the pixels of `from` over those of `to`: both have the same depth and size.
void copy_rows(const PixelView &from, const PixelView &to);
/// True when every alpha is white or, in the deeper ones, more.
bool opaque_row(const PF_Pixel *row, int width);
bool opaque_row(const PF_Pixel16 *row, int width);
bool opaque_row(const PF_PixelFloat *row, int width);
bool is_opaque(const PixelView &view);

}  // namespace stage
