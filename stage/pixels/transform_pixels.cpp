#include "stage/pixels/transform_pixels.h"

#include <algorithm>
#include <cmath>

namespace stage {
namespace {

double cofactor(const PF_FloatMatrix &m, int row, int column) {
    const int r0 = (row + 1) % 3, r1 = (row + 2) % 3;
    const int c0 = (column + 1) % 3, c1 = (column + 2) % 3;
    return m.mat[r0][c0] * m.mat[r1][c1] - m.mat[r0][c1] * m.mat[r1][c0];
}

bool is_finite(const PF_FloatMatrix &m) {
    for (const auto &row : m.mat) {
        for (const double element : row) {
            if (!std::isfinite(element)) return false;
        }
    }
    return true;
}

// Source points along one destination row.
class RowMap {
  public:
    RowMap(const PF_FloatMatrix &m, std::int64_t y)
        : m_(m),
          x0_(centre(y) * m.mat[1][0] + m.mat[2][0]),
          y0_(centre(y) * m.mat[1][1] + m.mat[2][1]),
          w0_(centre(y) * m.mat[1][2] + m.mat[2][2]),
          affine_(m.mat[0][2] == 0 && w0_ == 1) {}

    /// False when no point in front of the viewer belongs to the centre of column x.
    bool at(std::int64_t x, double &source_x, double &source_y) const {
        const double c = centre(x);
        source_x = c * m_.mat[0][0] + x0_;
        source_y = c * m_.mat[0][1] + y0_;
        if (affine_) return true;
        const double w = c * m_.mat[0][2] + w0_;
        if (!(w > 0)) return false;
        source_x /= w;
        source_y /= w;
        return true;
    }

  private:
    static double centre(std::int64_t i) { return static_cast<double>(i) + 0.5; }

    const PF_FloatMatrix &m_;
    double x0_, y0_, w0_;
    bool affine_;
};

// Reads the source at points; coordinates are those of pixel corners.
template <Depth kDepth>
class Sampler {
  public:
    using Traits = DepthTraits<kDepth>;
    using Pixel = typename Traits::Pixel;

    Sampler(const PixelView &src, const Compositing &how)
        : src_(src),
          how_(how),
          width_(src.width),
          height_(src.height),
          opaque_replaces_(replaces<kDepth>(how, Traits::kWhite)) {}

    void nearest(double x, double y, Pixel &out) const {
        if (!(x >= 0 && x < width_ && y >= 0 && y < height_)) return;
        lay(src_.row<const Pixel>(static_cast<int>(y))[static_cast<int>(x)], out);
    }

    void bilinear(double x, double y, Pixel &out) const {
        if (!(x > -0.5 && x < width_ + 0.5 && y > -0.5 && y < height_ + 0.5)) return;
        // The position of the upper left neighbour: -1 .. size - 1, shifted by 1 so that the
        // truncation is a floor.
        const int column = static_cast<int>(x + 0.5) - 1, row = static_cast<int>(y + 0.5) - 1;
        const double fx = x - 0.5 - column, fy = y - 0.5 - row;
        if (column >= 0 && row >= 0 && column < src_.width && row < src_.height) {
            const Pixel *upper = src_.row<const Pixel>(row) + column;
            if (fx == 0 && fy == 0) return lay(*upper, out);
            if (opaque_replaces_ && column + 1 < src_.width && row + 1 < src_.height &&
                no_zero_weight(fx, fy)) {
                const Pixel *lower = src_.row<const Pixel>(row + 1) + column;
                if (all_opaque(upper, lower)) return interpolate_opaque(upper, lower, fx, fy, out);
            }
        }
        interpolate(column, row, fx, fy, out);
    }

  private:
    void lay(const Pixel &pixel, Pixel &out) const {
        if (replaces<kDepth>(how_, static_cast<double>(pixel.alpha))) {
            out = pixel;
        } else {
            out = pixel_of<kDepth>(composite<kDepth>(how_, sample_of(pixel), sample_of(out)));
        }
    }

    static bool all_opaque(const Pixel *upper, const Pixel *lower) {
        constexpr auto kWhite = static_cast<typename Traits::Channel>(Traits::kWhite);
        return upper[0].alpha == kWhite && upper[1].alpha == kWhite && lower[0].alpha == kWhite &&
               lower[1].alpha == kWhite;
    }

    // Integer codes are finite, so 0 times any of them is 0; a float may be infinite.
    static bool no_zero_weight(double fx, double fy) {
        return Traits::kInteger || (fx != 0 && fy != 0);
    }

    // to_channel for a weighted mean of codes, which is neither negative nor NaN: half the
    // branches.
    static typename Traits::Channel from_mean(double mean) {
        using Channel = typename Traits::Channel;
        if constexpr (Traits::kInteger) {
            return static_cast<Channel>(
                std::min(static_cast<int>(mean + 0.5), static_cast<int>(Traits::kWhite)));
        } else {
            return static_cast<Channel>(mean);
        }
    }

    // Four opaque pixels that replace the destination: the common case, without alpha arithmetic.
    static void interpolate_opaque(const Pixel *upper, const Pixel *lower, double fx, double fy,
                                   Pixel &out) {
        const double w11 = fx * fy, w10 = fx - w11, w01 = fy - w11, w00 = 1 - fx - w01;
        const auto mix = [&](double a, double b, double c, double d) {
            return from_mean(a * w00 + b * w10 + c * w01 + d * w11);
        };
        out.red = mix(upper[0].red, upper[1].red, lower[0].red, lower[1].red);
        out.green = mix(upper[0].green, upper[1].green, lower[0].green, lower[1].green);
        out.blue = mix(upper[0].blue, upper[1].blue, lower[0].blue, lower[1].blue);
        out.alpha = upper[0].alpha;
    }

    void interpolate(int column, int row, double fx, double fy, Pixel &out) const {
        Sample sum{};
        bool covered = false;
        for (int tap = 0; tap < 4; ++tap) {
            const int x = column + (tap & 1), y = row + (tap >> 1);
            const double weight = ((tap & 1) != 0 ? fx : 1 - fx) * ((tap >> 1) != 0 ? fy : 1 - fy);
            // A weight of 0 is left out, not multiplied: infinities must not become NaN.
            if (weight == 0 || x < 0 || y < 0 || x >= src_.width || y >= src_.height) continue;
            covered = true;
            const Sample sample = sample_of(src_.row<const Pixel>(y)[x]);
            const double part = how_.straight ? weight * sample[0] : weight;
            sum[0] += weight * sample[0];
            for (std::size_t c = 1; c < 4; ++c) {
                if (part != 0) sum[c] += part * sample[c];
            }
        }
        if (!covered) return;
        if (how_.straight && sum[0] != 0) {
            for (std::size_t c = 1; c < 4; ++c) sum[c] /= sum[0];
        }
        out = pixel_of<kDepth>(composite<kDepth>(how_, sum, sample_of(out)));
    }

    const PixelView &src_;
    const Compositing &how_;
    double width_, height_;
    bool opaque_replaces_;
};

template <Depth kDepth>
void transform(const PixelView &src, const PixelView &dst, const Box &area,
               const PF_FloatMatrix &matrix, const Compositing &how, Sampling sampling) {
    using Pixel = typename DepthTraits<kDepth>::Pixel;
    const Sampler<kDepth> sampler(src, how);
    for (auto y = area.top; y < area.bottom; ++y) {
        const RowMap map(matrix, y);
        Pixel *out = dst.row<Pixel>(static_cast<int>(y));
        double source_x = 0, source_y = 0;
        for (auto x = area.left; x < area.right; ++x) {
            if (!map.at(x, source_x, source_y)) continue;
            if (sampling == Sampling::kNearest) {
                sampler.nearest(source_x, source_y, out[x]);
            } else {
                sampler.bilinear(source_x, source_y, out[x]);
            }
        }
    }
}

}  // namespace

std::optional<PF_FloatMatrix> destination_to_source(const PF_FloatMatrix &matrix,
                                                    bool source_to_destination) {
    if (!is_finite(matrix)) return std::nullopt;
    const double determinant = matrix.mat[0][0] * cofactor(matrix, 0, 0) +
                               matrix.mat[0][1] * cofactor(matrix, 0, 1) +
                               matrix.mat[0][2] * cofactor(matrix, 0, 2);
    if (!std::isfinite(determinant) || determinant == 0) return std::nullopt;
    if (!source_to_destination) return matrix;
    PF_FloatMatrix inverse{};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) inverse.mat[r][c] = cofactor(matrix, c, r) / determinant;
    }
    if (!is_finite(inverse)) return std::nullopt;
    return inverse;
}

void transform_pixels(const PixelView &src, const PixelView &dst, const Box &area,
                      const PF_FloatMatrix &matrix, const Compositing &how, Sampling sampling) {
    if (how.kind == Compositing::Kind::kNothing) return;
    const Box inside = intersect(area, bounds(dst));
    if (inside.empty()) return;
    visit_depth(src.depth, [&]<Depth kDepth>() {
        transform<kDepth>(src, dst, inside, matrix, how, sampling);
    });
}

}  // namespace stage
