// Matrices that only scale and move take a way of their own: pixel by pixel it is the plain rule.
#include <gtest/gtest.h>

#include <cmath>

#include "pixel_grid.h"
#include "stage/pixels/transform_pixels.h"

namespace stage_test {
namespace {

using stage::Compositing;
using stage::Depth;
using stage::DepthTraits;
using stage::Sample;

class Random {
  public:
    int below(int count) {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(count));
    }

  private:
    std::uint32_t state_ = 12345;
};

/// Mostly opaque; some pixels translucent or transparent.
template <Depth kDepth>
Grid<kDepth> random_grid(Random &random, int width, int height) {
    using Channel = typename DepthTraits<kDepth>::Channel;
    const int steps =
        DepthTraits<kDepth>::kInteger ? static_cast<int>(DepthTraits<kDepth>::kWhite) : 4096;
    const auto channel = [&] {
        return static_cast<Channel>(random.below(steps + 1) * DepthTraits<kDepth>::kWhite / steps);
    };
    Grid<kDepth> grid(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int kind = random.below(20);
            const Channel alpha = kind == 0   ? Channel{0}
                                  : kind == 1 ? channel()
                                              : static_cast<Channel>(DepthTraits<kDepth>::kWhite);
            grid.set(x, y, {alpha, channel(), channel(), channel()});
        }
    }
    return grid;
}

/// The rule as the header states it, for one destination pixel and a source point.
template <Depth kDepth>
typename Grid<kDepth>::Pixel expected(const Grid<kDepth> &src, double x, double y,
                                      const typename Grid<kDepth>::Pixel &under,
                                      const Compositing &how) {
    const double left = std::floor(x - 0.5), top = std::floor(y - 0.5);
    const double fx = x - 0.5 - left, fy = y - 0.5 - top;
    Sample sum{};
    bool covered = false;
    for (int tap = 0; tap < 4; ++tap) {
        const int column = static_cast<int>(left) + tap % 2, row = static_cast<int>(top) + tap / 2;
        const double weight = (tap % 2 != 0 ? fx : 1 - fx) * (tap / 2 != 0 ? fy : 1 - fy);
        if (weight == 0 || column < 0 || row < 0) continue;
        if (column >= src.width() || row >= src.height()) continue;
        covered = true;
        const Sample sample = stage::sample_of(src.at(column, row));
        sum[0] += weight * sample[0];
        for (std::size_t c = 1; c < 4; ++c) sum[c] += weight * sample[0] * sample[c];
    }
    if (!covered) return under;
    for (std::size_t c = 1; c < 4; ++c) sum[c] = sum[0] != 0 ? sum[c] / sum[0] : 0;
    return stage::pixel_of<kDepth>(stage::composite<kDepth>(how, sum, stage::sample_of(under)));
}

/// Integer codes exactly, floats within rounding of the sums.
template <class Pixel>
void expect_near(const Pixel &is, const Pixel &should, double tolerance, const std::string &where) {
    ASSERT_NEAR(static_cast<double>(is.alpha), static_cast<double>(should.alpha), tolerance)
        << where;
    ASSERT_NEAR(static_cast<double>(is.red), static_cast<double>(should.red), tolerance) << where;
    ASSERT_NEAR(static_cast<double>(is.green), static_cast<double>(should.green), tolerance)
        << where;
    ASSERT_NEAR(static_cast<double>(is.blue), static_cast<double>(should.blue), tolerance) << where;
}

struct Move {
    double scale_x, scale_y, x, y;  ///< source = destination * scale + (x, y)
};
// Crooked numbers: sums that lie between two codes to the last bit would be rounded by luck.
constexpr Move kMoves[] = {
    {1, 1, 0, 0},
    {1, 1, 0.31415926, 0},
    {1, 1, 0, -0.70710678},
    {1.37286131, 0.61803398, 2.10190283, -3.30190127},
    {4.00314159, 4.00314159, -9.1237167, 1.41421356},
    {0.26457513, 0.26457513, 5.09901951, 7.77817459},
    {-1.10871789, 1.30384048, 30.2654919, 0.12345678},
    {1.20415945, -0.91104335, 0.10488088, 25.4950975},
    {1, 1, 100, 0},
    {1, 1, -1e15, 3},
    {2.71828182, 2.71828182, -60, -50},
    {1e-6, 1e-6, 3.23606797, 4.89897948},
};

template <Depth kDepth>
void compare(PF_TransferMode xfer, int opacity) {
    Random random;
    Grid<kDepth> src = random_grid<kDepth>(random, 29, 23);
    const Grid<kDepth> before = random_grid<kDepth>(random, 31, 27);
    PF_CompositeMode mode{};
    mode.xfer = xfer;
    mode.opacity = static_cast<A_u_char>(opacity);
    mode.opacitySu = static_cast<A_u_short>(opacity == 255 ? 32768 : 12345);
    const Compositing how = *stage::make_compositing(mode, PF_MF_Alpha_STRAIGHT, kDepth);
    for (const Move &m : kMoves) {
        Grid<kDepth> dst = before;
        const PF_FloatMatrix matrix{{{m.scale_x, 0, 0}, {0, m.scale_y, 0}, {m.x, m.y, 1}}};
        transform_pixels(src.view(), dst.view(), {0, 0, 31, 27}, matrix, how,
                         stage::Sampling::kBilinear);
        EXPECT_TRUE(dst.padding_intact());
        for (int y = 0; y < 27; ++y) {
            for (int x = 0; x < 31; ++x) {
                const double at_x = (x + 0.5) * m.scale_x + m.x;
                const double at_y = (y + 0.5) * m.scale_y + m.y;
                const bool far = !(std::abs(at_x) < 1e6);
                const auto should =
                    far ? before.at(x, y) : expected<kDepth>(src, at_x, at_y, before.at(x, y), how);
                expect_near(dst.at(x, y), should, DepthTraits<kDepth>::kInteger ? 0 : 1e-6,
                            std::to_string(x) + ", " + std::to_string(y) + " of scale " +
                                std::to_string(m.scale_x));
            }
        }
    }
}

TEST(ScaledPicture, opaque_and_other_pixels_8_bit) {
    compare<Depth::U8>(PF_Xfer_IN_FRONT, 255);
}
TEST(ScaledPicture, opaque_and_other_pixels_16_bit) {
    compare<Depth::U16>(PF_Xfer_IN_FRONT, 255);
}
TEST(ScaledPicture, opaque_and_other_pixels_float) {
    compare<Depth::Float>(PF_Xfer_IN_FRONT, 255);
}
TEST(ScaledPicture, part_of_the_opacity) {
    compare<Depth::U8>(PF_Xfer_IN_FRONT, 100);
    compare<Depth::U16>(PF_Xfer_IN_FRONT, 100);
}

template <Depth kDepth>
void white_stays_white() {
    constexpr auto kWhite =
        static_cast<typename DepthTraits<kDepth>::Channel>(DepthTraits<kDepth>::kWhite);
    Grid<kDepth> src(40, 40, {kWhite, kWhite, 0, kWhite}), dst(40, 40);
    PF_CompositeMode mode{};
    mode.xfer = PF_Xfer_IN_FRONT;
    mode.opacity = 255;
    mode.opacitySu = 32768;
    const Compositing how = *stage::make_compositing(mode, PF_MF_Alpha_STRAIGHT, kDepth);
    for (const double scale : {0.1, 0.3333333333333333, 0.7, 0.9999999}) {
        const PF_FloatMatrix matrix{{{scale, 0, 0}, {0, scale, 0}, {1.7, 2.3, 1}}};
        transform_pixels(src.view(), dst.view(), {0, 0, 40, 40}, matrix, how,
                         stage::Sampling::kBilinear);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                if (scale * (std::max(x, y) + 0.5) + 2.3 > 39.5) continue;  // the edge
                const auto pixel = dst.at(x, y);
                ASSERT_EQ(pixel.alpha, kWhite);
                ASSERT_EQ(pixel.red, kWhite);
                ASSERT_EQ(pixel.green, 0);
                ASSERT_EQ(pixel.blue, kWhite);
            }
        }
    }
}

TEST(ScaledPicture, white_stays_white_whatever_the_weights) {
    white_stays_white<Depth::U8>();
    white_stays_white<Depth::U16>();
}

}  // namespace
}  // namespace stage_test
