// A small world with padded rows and guard pixels around it, for the drawing routines.
#pragma once

#include <cstring>
#include <vector>

#include "pixels/pixel_format.h"
#include "pixels/world_view.h"

namespace ks {

/// `width` x `height` pixels of type P, all zero, inside a larger buffer of a marker value.
template <class P>
class TestWorld {
  public:
    TestWorld(int width, int height)
        : width_(width), height_(height), stride_(width + 3), pixels_(total(), guard()) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) at(x, y) = P{};
        }
    }

    [[nodiscard]] WorldView view() {
        const auto row_bytes = static_cast<std::int64_t>(sizeof(P)) * stride_;
        return {&at(0, 0), row_bytes, width_, height_};
    }

    /// The same world upside down: base at the last row, negative row bytes.
    [[nodiscard]] WorldView flipped() {
        const auto row_bytes = static_cast<std::int64_t>(sizeof(P)) * stride_;
        return {&at(0, height_ - 1), -row_bytes, width_, height_};
    }

    P &at(int x, int y) {
        return pixels_[static_cast<std::size_t>((y + kBorder) * stride_ + x + 1)];
    }

    /// True when no byte outside the world's pixels has changed.
    [[nodiscard]] bool guards_intact() {
        const P g = guard();
        for (int y = -kBorder; y < height_ + kBorder; ++y) {
            for (int x = -1; x < stride_ - 1; ++x) {
                const bool inside = x >= 0 && x < width_ && y >= 0 && y < height_;
                if (!inside && std::memcmp(&at(x, y), &g, sizeof g) != 0) return false;
            }
        }
        return true;
    }

    /// Number of pixels whose green is not 0.
    [[nodiscard]] int drawn() {
        int count = 0;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) count += at(x, y).green != 0 ? 1 : 0;
        }
        return count;
    }

  private:
    static constexpr int kBorder = 2;

    static P guard() {
        P pixel;
        std::memset(&pixel, 0x5A, sizeof pixel);
        return pixel;
    }
    std::size_t total() const {
        return static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_ + 2 * kBorder);
    }

    int width_;
    int height_;
    int stride_;
    std::vector<P> pixels_;
};

}  // namespace ks
