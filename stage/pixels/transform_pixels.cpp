#include "stage/pixels/transform_pixels.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "stage/pixels/opaque_mean.h"

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
            if (column + 1 < src_.width && row + 1 < src_.height) {
                const Pixel *lower = src_.row<const Pixel>(row + 1) + column;
                if (opaque_pair(upper, lower, fx, fy, out)) return;
            }
        }
        interpolate(column, row, fx, fy, out);
    }

    /// Interpolates two pixels of each of two rows where all four are opaque and replace what they
    /// are laid over: the common case, without alpha arithmetic. False, with nothing done,
    /// elsewhere.
    bool opaque_pair(const Pixel *upper, const Pixel *lower, double fx, double fy,
                     Pixel &out) const {
        if (!opaque_replaces_ || !no_zero_weight(fx, fy) || !all_opaque(upper, lower)) return false;
        opaque_mean(upper, lower, CornerWeights(fx, fy), out);
        return true;
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

// Where a coordinate falls between the pixels of a side.
struct Tap {
    double fraction = 0;   // weight of the second pixel
    int first = -1;        // of two pixels of the source, -1 where there are not two
    bool touches = false;  // some pixel of the source has a share
};

Tap tap_at(double position, int size) {
    Tap tap;
    tap.touches = position > -0.5 && position < size + 0.5;
    if (!tap.touches) return tap;
    const int first = static_cast<int>(position + 0.5) - 1;
    tap.fraction = position - 0.5 - first;
    if (first >= 0 && first + 1 < size) tap.first = first;
    return tap;
}

// Draws through a matrix that only scales and moves, which is what monitors do with a picture:
// columns are worked out once, and opaque pixels need little more than their mean. Everything else
// is left to `sampler`.
template <Depth kDepth>
class ScaledPicture {
  public:
    using Pixel = typename DepthTraits<kDepth>::Pixel;

    ScaledPicture(const PixelView &src, const Sampler<kDepth> &sampler,
                  const PF_FloatMatrix &matrix, const Box &area)
        : src_(src), sampler_(sampler), matrix_(matrix), left_(area.left) {
        const RowMap map(matrix, area.top);
        double x = 0, y = 0;
        for (auto column = area.left; column < area.right; ++column) {
            map.at(column, x, y);
            taps_.push_back(tap_at(x, src.width));
        }
        // Those that touch the source lie together.
        const auto touches = [](const Tap &tap) { return tap.touches; };
        const auto begin = std::find_if(taps_.begin(), taps_.end(), touches);
        const auto end = std::find_if_not(begin, taps_.end(), touches);
        left_ += begin - taps_.begin();
        taps_ = std::vector<Tap>(begin, end);
    }

    static bool serves(const PF_FloatMatrix &m) {
        return m.mat[0][1] == 0 && m.mat[1][0] == 0 && m.mat[0][2] == 0 && m.mat[1][2] == 0 &&
               m.mat[2][2] == 1;
    }

    void draw_row(std::int64_t y, Pixel *out) const {
        if (taps_.empty()) return;
        const RowMap map(matrix_, y);
        double source_x = 0, source_y = 0;
        map.at(left_, source_x, source_y);
        const Tap row = tap_at(source_y, src_.height);
        if (!row.touches) return;
        const Pixel *upper = row.first >= 0 ? src_.row<const Pixel>(row.first) : nullptr;
        const Pixel *lower = row.first >= 0 ? src_.row<const Pixel>(row.first + 1) : nullptr;
        out += left_;
        for (std::size_t i = 0; i < taps_.size(); ++i) {
            const Tap &tap = taps_[i];
            if (upper != nullptr && tap.first >= 0 &&
                sampler_.opaque_pair(upper + tap.first, lower + tap.first, tap.fraction,
                                     row.fraction, out[i])) {
                continue;
            }
            map.at(left_ + static_cast<std::int64_t>(i), source_x, source_y);
            sampler_.bilinear(source_x, source_y, out[i]);
        }
    }

  private:
    const PixelView &src_;
    const Sampler<kDepth> &sampler_;
    const PF_FloatMatrix &matrix_;
    std::int64_t left_;  // column of the first tap
    std::vector<Tap> taps_;
};

template <Depth kDepth>
void transform(const PixelView &src, const PixelView &dst, const Box &area,
               const PF_FloatMatrix &matrix, const Compositing &how, Sampling sampling) {
    using Pixel = typename DepthTraits<kDepth>::Pixel;
    const Sampler<kDepth> sampler(src, how);
    if (sampling == Sampling::kBilinear && ScaledPicture<kDepth>::serves(matrix)) {
        const ScaledPicture<kDepth> picture(src, sampler, matrix, area);
        for (auto y = area.top; y < area.bottom; ++y) {
            picture.draw_row(y, dst.row<Pixel>(static_cast<int>(y)));
        }
        return;
    }
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
