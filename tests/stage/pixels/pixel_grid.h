// A small world for tests: exact pixels, and padding that must survive.
#pragma once

#include <cstring>
#include <vector>

#include "stage/pixels/pixel_view.h"

namespace stage_test {

/// Rows are padded by 12 bytes of 0x77. Pixels start as given.
template <stage::Depth kDepth>
class Grid {
  public:
    using Pixel = typename stage::DepthTraits<kDepth>::Pixel;

    Grid(int width, int height, Pixel pixel = {})
        : width_(width),
          height_(height),
          bytes_(stride() * static_cast<std::size_t>(height), 0x77) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) set(x, y, pixel);
        }
    }

    stage::PixelView view() {
        return {reinterpret_cast<std::byte *>(bytes_.data()), static_cast<std::ptrdiff_t>(stride()),
                width_, height_, kDepth};
    }
    Pixel at(int x, int y) const {
        Pixel pixel;
        std::memcpy(&pixel, bytes_.data() + offset(x, y), sizeof pixel);
        return pixel;
    }
    void set(int x, int y, Pixel pixel) {
        std::memcpy(bytes_.data() + offset(x, y), &pixel, sizeof pixel);
    }
    bool padding_intact() const {
        const std::size_t pixels = static_cast<std::size_t>(width_) * sizeof(Pixel);
        for (int y = 0; y < height_; ++y) {
            for (std::size_t i = pixels; i < stride(); ++i) {
                if (bytes_[static_cast<std::size_t>(y) * stride() + i] != 0x77) return false;
            }
        }
        return true;
    }
    int width() const { return width_; }
    int height() const { return height_; }

  private:
    std::size_t stride() const { return static_cast<std::size_t>(width_) * sizeof(Pixel) + 12; }
    std::size_t offset(int x, int y) const {
        return static_cast<std::size_t>(y) * stride() + static_cast<std::size_t>(x) * sizeof(Pixel);
    }

    int width_, height_;
    std::vector<unsigned char> bytes_;
};

using Grid8 = Grid<stage::Depth::U8>;
using Grid16 = Grid<stage::Depth::U16>;
using GridF = Grid<stage::Depth::Float>;

/// Bytewise, so that NaN equals itself.
template <class Pixel>
bool same(const Pixel &a, const Pixel &b) {
    return std::memcmp(&a, &b, sizeof(Pixel)) == 0;
}

/// The number of pixels of `grid` that differ from `pixel`.
template <class G>
int count_other(const G &grid, const typename G::Pixel &pixel) {
    int count = 0;
    for (int y = 0; y < grid.height(); ++y) {
        for (int x = 0; x < grid.width(); ++x) count += same(grid.at(x, y), pixel) ? 0 : 1;
    }
    return count;
}

}  // namespace stage_test
