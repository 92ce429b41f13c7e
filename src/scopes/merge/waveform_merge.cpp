#include "scopes/merge/waveform_merge.h"

#include <algorithm>
#include <cmath>

#include "scopes/merge/column_sums.h"
#include "scopes/merge/even_plots.h"
#include "scopes/sampling/sample_block.h"

namespace ks {
namespace {

/// What one additive plot of `colour` leaves in a cleared pixel, in codes; floats as they are.
template <class P>
P plotted(const Colour &colour) {
    P pixel{};
    blend_pixel(pixel, colour, kPlotAdditive | kPlotClampFloat);
    return pixel;
}

bool all_add_evenly(const Colour &c) {
    return adds_evenly(c.red) && adds_evenly(c.green) && adds_evenly(c.blue);
}

/// How far adding float colours in turn ends from their sum. A sum between two powers of two takes
/// a colour as a multiple of its own last place; only the two highest matter.
struct Drift {
    float upper = 0.0f;  ///< if every addition started from 0.5 to 1.0
    float lower = 0.0f;  ///< and from 0.25 to 0.5
    float most = 0.0f;   ///< in the worst order

    void add(float hits, float channel) {
        const float high = ((0.5f + channel) - 0.5f) - channel;
        const float low = ((0.25f + channel) - 0.25f) - channel;
        upper += hits * high;
        lower += hits * low;
        most += hits * std::max(std::abs(high), std::abs(low));
    }
    /// Some is left for the lower powers of two and for the roundings of the sum itself.
    [[nodiscard]] bool too_far() const {
        return std::max(std::abs(upper), std::abs(lower)) > 7e-6f || most > 9e-6f;
    }
};

/// A float channel below full scale, whose sum therefore counts.
bool is_open(float sum) {
    return sum > 0.0f && sum < 1.0f + 1e-5f;
}

/// Plots that cannot drift too far on the way to `sum`, each rounded by at most half a last place
/// of it: 2^-25 above 0.5.
int safe_hits(float sum) {
    constexpr int kAboveHalf = 230;
    return sum >= 0.5f ? kAboveHalf : sum >= 0.25f ? 2 * kAboveHalf : 4 * kAboveHalf;
}

/// Slots that light column `x` with their first (column x) or second (column x + 1 of theirs) part.
template <class Splits, class F>
void for_slots_of(const Splits &splits, int x, F &&f) {
    auto at = std::lower_bound(splits.begin(), splits.end(), x - 1,
                               [](const auto &split, int column) { return split.first < column; });
    for (; at != splits.end() && at->first <= x; ++at) {
        f(static_cast<int>(at - splits.begin()), at->increments[x - at->first]);
    }
}

}  // namespace

template <class P>
WaveformMerge<P>::WaveformMerge(const Sampler &sampler)
    : sampler_(sampler),
      plan_(sampler.plan()),
      context_(*plan_.context),
      traces_{scaled(kRedTrace, context_.waveformGain), scaled(kGreenTrace, context_.waveformGain),
              scaled(kBlueTrace, context_.waveformGain)},
      alpha_({traces_[0].alpha, 0.0f, 0.0f, 0.0f}) {
    if (plan_.rgb_uses.waveform) rgb_ = split_slots(plan_.rgb.slots);
    if (plan_.has(Consumer::kLumaRows)) luma_ = split_slots(plan_.luma.slots);
    const std::vector<SlotSplit> &any = plan_.rgb_uses.waveform ? rgb_ : luma_;
    if (any.empty()) return;
    first_ = any.front().first;
    columns_ = any.back().first + 1 - first_ + 1;
}

template <class P>
typename WaveformMerge<P>::Increments WaveformMerge<P>::increments(float weight) const {
    Increments result;
    if (weight == 0.0f) return result;
    const Colour luma = scaled(context_.lumaColour, weight);
    const P luma_codes = plotted<P>(luma);
    const Colour trace = scaled(traces_[0], weight);
    result.luma[0] = luma_codes.red;
    result.luma[1] = luma_codes.green;
    result.luma[2] = luma_codes.blue;
    result.trace = plotted<P>(trace).red;
    constexpr double kOpaque = 1.0 - 1e-7;
    const auto faded = [&](double w) {
        return std::log1p(-std::min(static_cast<double>(traces_[0].alpha) * w, kOpaque));
    };
    result.plots = weight == 1.0f || !(faded(1.0) < 0.0)
                       ? weight
                       : static_cast<float>(faded(weight) / faded(1.0));
    if constexpr (std::is_same_v<P, Pixel8>) {
        result.certain = (!plan_.has(Consumer::kLumaRows) || all_add_evenly(luma)) &&
                         (!plan_.rgb_uses.waveform || adds_evenly(trace.red));
    }
    return result;
}

template <class P>
std::vector<typename WaveformMerge<P>::SlotSplit> WaveformMerge<P>::split_slots(
    const ColumnSlots &slots) const {
    std::vector<SlotSplit> splits(slots.column.size());
    for (std::size_t i = 0; i < splits.size(); ++i) {
        const ColumnSplit split = split_column(context_, static_cast<int>(slots.column[i]));
        const bool whole = split.weight_second == 0.0f && split.weight_first == 1.0f;
        if (whole && i > 0 && splits[i - 1].increments[0].plots == 1.0f) {
            splits[i] = splits[i - 1];
        } else {
            splits[i].increments[0] = increments(split.weight_first);
            splits[i].increments[1] = increments(split.weight_second);
        }
        splits[i].first = split.first;
    }
    return splits;
}

template <class P>
std::size_t WaveformMerge<P>::scratch_size() const {
    const auto rows = static_cast<std::size_t>(plan_.waveform_rows.rows()) + 8;
    return 4 * (rows + static_cast<std::size_t>(plan_.rgb.stride)) + 64;
}

template <class P>
bool WaveformMerge<P>::certain(int x, const std::vector<SlotSplit> &splits) const {
    bool all = true;
    for_slots_of(splits, x, [&](int, const Increments &hit) { all = all && hit.certain; });
    return all;
}

template <class P>
void WaveformMerge<P>::draw_column(int x, float *scratch) const {
    if (x < 0 || x >= context_.waveformBitmap.width) return;
    if (!certain(x, rgb_) || !certain(x, luma_)) return plot_samples(x);
    const std::size_t rows = (static_cast<std::size_t>(plan_.waveform_rows.rows()) + 8) / 8 * 8;
    const auto classes = static_cast<std::size_t>(plan_.rgb.stride);
    std::fill(scratch, scratch + 4 * (rows + classes), 0.0f);
    float *const sums[4] = {scratch, scratch + rows, scratch + 2 * rows, scratch + 3 * rows};
    add_luma(x, sums);
    add_traces(x, scratch + 4 * rows, sums);
    if (kIsFloatPixel<P> && drifts(x, sums)) return plot_samples(x);
    write_column(x, sums);
}

/// Adding in turn may end further from the sum than is promised, in some pixel of the column.
template <class P>
bool WaveformMerge<P>::drifts(int x, float *const (&sums)[4]) const {
    const int rows = plan_.waveform_rows.rows();
    for (int first = 0; first < rows; first += RowHits::kRows) {
        const int last = std::min(first + RowHits::kRows, rows);
        bool any = false;
        for (int row = first; row < last && !any; ++row) {
            any = is_open(sums[0][row]) || is_open(sums[1][row]) || is_open(sums[2][row]);
        }
        if (!any) continue;
        RowHits hits;
        count_hits(x, first, last - first, hits);
        for (int row = first; row < last; ++row) {
            bool many = false;
            for (std::size_t k = 0; k < 3; ++k) {
                const int plots = hits.luma[row - first] + hits.traces[k][row - first];
                many = many || (is_open(sums[k][row]) && plots > safe_hits(sums[k][row]));
            }
            if (many && drifts_at(x, row, sums)) return true;
        }
    }
    return false;
}

/// Adds up the plots in `count` rows from `first` on.
template <class P>
void WaveformMerge<P>::count_hits(int x, int first, int count, RowHits &hits) const {
    const std::size_t cells_read = static_cast<std::size_t>(count + 7) / 8 * 8;
    for_slots_of(luma_, x, [&](int slot, const Increments &) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.luma, slot);
        if (cells != nullptr) add_hits(cells + first, cells_read, hits.luma);
    });
    const auto stride = static_cast<std::size_t>(plan_.rgb.stride);
    for_slots_of(rgb_, x, [&](int slot, const Increments &) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.rgb, slot);
        for (std::size_t k = 0; cells != nullptr && k < 3; ++k) {
            add_hits(cells + k * stride + first, cells_read, hits.traces[k]);
        }
    });
}

/// The same of one pixel. A float's class is its row.
template <class P>
bool WaveformMerge<P>::drifts_at(int x, int row, float *const (&sums)[4]) const {
    Drift drift[3];
    for_slots_of(luma_, x, [&](int slot, const Increments &hit) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.luma, slot);
        if (cells == nullptr) return;
        for (std::size_t k = 0; k < 3; ++k) drift[k].add(cells[row], hit.luma[k]);
    });
    for_slots_of(rgb_, x, [&](int slot, const Increments &hit) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.rgb, slot);
        if (cells == nullptr) return;
        const auto stride = static_cast<std::size_t>(plan_.rgb.stride);
        for (std::size_t k = 0; k < 3; ++k) {
            drift[k].add(cells[k * stride + static_cast<std::size_t>(row)], hit.trace);
        }
    });
    bool any = false;
    for (std::size_t k = 0; k < 3; ++k) any = any || (is_open(sums[k][row]) && drift[k].too_far());
    return any;
}

template <class P>
void WaveformMerge<P>::add_luma(int x, float *const (&sums)[4]) const {
    for_slots_of(luma_, x, [&](int slot, const Increments &hit) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.luma, slot);
        if (cells == nullptr) return;
        const float factors[4] = {hit.luma[0], hit.luma[1], hit.luma[2], hit.plots};
        add_scaled(cells, static_cast<std::size_t>(plan_.luma.stride), factors, sums);
    });
}

template <class P>
void WaveformMerge<P>::add_traces(int x, float *classes, float *const (&sums)[4]) const {
    const auto stride = static_cast<std::size_t>(plan_.rgb.stride);
    float *const by_class[4] = {classes, classes + stride, classes + 2 * stride,
                                classes + 3 * stride};
    for_slots_of(rgb_, x, [&](int slot, const Increments &hit) {
        const std::uint16_t *const cells = sampler_.slot_cells(plan_.rgb, slot);
        if (cells == nullptr) return;
        add_planes(cells, stride, hit.trace, hit.plots, by_class);
    });
    if (rgb_.empty()) return;
    for (int i = 0; i < plan_.classes.count; ++i) {
        const auto c = static_cast<std::size_t>(i);
        if (by_class[3][c] == 0.0f) continue;
        const auto row = static_cast<std::size_t>(plan_.classes.waveform_row[c]);
        for (std::size_t k = 0; k < 4; ++k) sums[k][row] += by_class[k][c];
    }
}

template <class P>
void WaveformMerge<P>::write_column(int x, float *const (&sums)[4]) const {
    constexpr float kFull = PixelTraits<P>::kFullScale;
    using Channel = typename PixelTraits<P>::Channel;
    const WorldView &bitmap = context_.waveformBitmap;
    const int rows = std::min(plan_.waveform_rows.rows(), bitmap.height - plan_.waveform_rows.top);
    const double fade = std::log1p(-std::min(static_cast<double>(traces_[0].alpha), 1.0 - 1e-7));
    for (int row = 0; row < rows; ++row) {
        const float plots = sums[3][row];
        if (plots == 0.0f) continue;
        P &pixel = *bitmap.pixel<P>(x, plan_.waveform_rows.top + row);
        const auto channel = [&](std::size_t k) {
            return static_cast<Channel>(std::min(sums[k][row], kFull));
        };
        pixel.red = channel(0);
        pixel.green = channel(1);
        pixel.blue = channel(2);
        if constexpr (kIsFloatPixel<P>) {
            pixel.alpha = static_cast<float>(-std::expm1(fade * static_cast<double>(plots)));
        } else {
            pixel.alpha = alpha_.after(static_cast<std::size_t>(plots + 1e-3f)).alpha;
        }
    }
}

/// The samples of the column one by one, in the order of parts, rows and columns.
template <class P>
void WaveformMerge<P>::plot_samples(int x) const {
    const WorldView &bitmap = context_.waveformBitmap;
    const RowMap &map = plan_.waveform_rows;
    std::vector<std::pair<int, float>> columns;  // source columns and their weights
    const auto split_of = [&](int j) { return split_column(context_, j * context_.stepX); };
    int first = 0;  // of the sampled columns, which lie in ascending order
    for (int behind = plan_.columns; first < behind;) {
        const int middle = first + (behind - first) / 2;
        if (split_of(middle).first < x - 1) {
            first = middle + 1;
        } else {
            behind = middle;
        }
    }
    for (int j = first; j < plan_.columns; ++j) {
        const ColumnSplit split = split_of(j);
        if (split.first > x) break;
        if (split.first == x) columns.emplace_back(j * context_.stepX, split.weight_first);
        if (split.first == x - 1 && split.weight_second != 0.0f) {
            columns.emplace_back(j * context_.stepX, split.weight_second);
        }
    }
    const auto plot_at = [&](float value, const Colour &colour) {
        const int row = map.row(value);
        if (row == map.spare() || map.top + row >= bitmap.height) return;
        blend_pixel(*bitmap.pixel<P>(x, map.top + row), colour, kPlotAdditive | kPlotClampFloat);
    };
    sampler_.for_sampled_rows([&](int y) {
        for (const auto &[column, weight] : columns) {
            const Colour s = to_colour(*context_.source.pixel<const P>(column, y));
            if (!luma_.empty()) {
                plot_at(luminance(s, context_.lumaMath), scaled(context_.lumaColour, weight));
            }
            if (rgb_.empty()) continue;
            plot_at(s.red, scaled(traces_[0], weight));
            plot_at(s.green, scaled(traces_[1], weight));
            plot_at(s.blue, scaled(traces_[2], weight));
        }
    });
}

template class WaveformMerge<Pixel8>;
template class WaveformMerge<Pixel16>;
template class WaveformMerge<PixelF>;

}  // namespace ks
