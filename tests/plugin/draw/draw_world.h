// A fake host and a world to draw on, with padded rows whose padding is watched.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "draw/draw_surface.h"
#include "hostapi/constants.h"
#include "pixels/pixel_format.h"
#include "support/fake_host.h"

namespace draw_test {

constexpr ks::Colour kWhite{1.0f, 1.0f, 1.0f, 1.0f};
constexpr ks::Colour kBlack{1.0f, 0.0f, 0.0f, 0.0f};
constexpr ks::Colour kRed{1.0f, 1.0f, 0.0f, 0.0f};
constexpr ks::Colour kGreen{1.0f, 0.0f, 1.0f, 0.0f};
constexpr ks::Colour kBlue{1.0f, 0.0f, 0.0f, 1.0f};

// A world of pixels P, zero at first, with 12 bytes of padding behind every row.
template <class P>
class World {
  public:
    World(int width, int height)
        : width_(width), row_bytes_(width * static_cast<int>(sizeof(P)) + kPadding) {
        bytes_.assign(static_cast<std::size_t>(row_bytes_) * height, kPaddingByte);
        world.data = reinterpret_cast<PF_PixelPtr>(bytes_.data());
        world.rowbytes = row_bytes_;
        world.width = width;
        world.height = height;
        fill(P{});
    }

    void set(int x, int y, const P &pixel) { std::memcpy(at(x, y), &pixel, sizeof pixel); }
    [[nodiscard]] P get(int x, int y) const {
        P pixel;
        std::memcpy(&pixel, const_cast<World *>(this)->at(x, y), sizeof pixel);
        return pixel;
    }
    void fill(const P &pixel) {
        for (int y = 0; y < world.height; ++y) {
            for (int x = 0; x < width_; ++x) set(x, y, pixel);
        }
    }
    [[nodiscard]] bool padding_untouched() const {
        for (std::size_t i = 0; i < bytes_.size(); ++i) {
            const auto column = static_cast<int>(i % static_cast<std::size_t>(row_bytes_));
            if (column >= row_bytes_ - kPadding && bytes_[i] != kPaddingByte) return false;
        }
        return true;
    }

    PF_EffectWorld world{};

  private:
    static constexpr int kPadding = 12;
    static constexpr char kPaddingByte = 0x5A;

    char *at(int x, int y) {
        return bytes_.data() + y * row_bytes_ + x * static_cast<int>(sizeof(P));
    }

    int width_;
    int row_bytes_;
    std::vector<char> bytes_;
};

// A host at full resolution, square pixels, best quality.
class DrawHost : public fake::FakeHost {
  public:
    DrawHost() {
        in.downsample_x = {1, 1};
        in.downsample_y = {1, 1};
        in.pixel_aspect_ratio = {1, 1};
        in.quality = PF_Quality_HI;
    }

    // Nothing is left: no handle, no lock, no suite, and no call that a host would not stand.
    void expect_nothing_held() {
        EXPECT_EQ(calls.live_blocks(), 0);
        EXPECT_EQ(calls.open_locks(), 0);
        EXPECT_EQ(suites_held(), 0);
        EXPECT_EQ(calls.misuse, std::vector<std::string>{});
    }
};

}  // namespace draw_test
