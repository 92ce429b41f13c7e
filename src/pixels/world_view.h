// A host world as the pixel routines see it: base, row bytes and size, without host types.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ks {

/// Pixel (x, y) lies at base + y * row_bytes + x * sizeof(pixel). Row bytes may exceed the row and
/// may be negative; offsets are 64-bit, since a world can hold more than 4 GB.
struct WorldView {
    void *base = nullptr;
    std::int64_t row_bytes = 0;
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels

    /// True when (x, y) may be addressed; never for a world without pixels.
    [[nodiscard]] bool contains(std::int64_t x, std::int64_t y) const {
        return base != nullptr && x >= 0 && x < width && y >= 0 && y < height;
    }

    /// Address of pixel (x, y) of type P; no bounds check. [host thread] [worker]
    template <class P>
    [[nodiscard]] P *pixel(std::int64_t x, std::int64_t y) const {
        auto *const row = static_cast<std::byte *>(base) + y * row_bytes;
        return reinterpret_cast<P *>(row + x * static_cast<std::int64_t>(sizeof(P)));
    }
};

}  // namespace ks
