#include "scopes/merge/histogram_merge.h"

#include <algorithm>

#include "scopes/merge/column_sums.h"

namespace ks {

HistogramMerge::HistogramMerge(const Sampler &sampler, int parts)
    : sampler_(sampler),
      plan_(sampler.plan()),
      parts_(parts),
      sums_(plan_.rgb_uses.histogram ? plan_.rgb.slot_cells() * static_cast<std::size_t>(parts)
                                     : 0) {}

void HistogramMerge::add_slot(int part, int slot) {
    const std::uint16_t *const cells = sampler_.slot_cells(plan_.rgb, slot);
    if (cells == nullptr) return;
    const std::size_t count = plan_.rgb.slot_cells();
    add_counts(cells, count, sums_.data() + static_cast<std::size_t>(part) * count);
}

std::array<std::uint32_t, 3> HistogramMerge::finish() {
    std::array<std::uint32_t, 3> maxima{1, 1, 1};
    std::uint32_t *const bins = plan_.context->histogramBins;
    const bool shared = plan_.rgb_uses.histogram;
    const int channels = shared || plan_.has(Consumer::kRgbBins) ? 3
                         : plan_.has(Consumer::kLumaBins)        ? 1
                                                                 : 0;
    if (bins == nullptr) return maxima;
    std::fill(bins, bins + channels * kHistogramBins, 0u);
    if (shared) {
        finish_shared(bins);
    } else {
        finish_strips(bins, channels);
    }
    for (int k = 0; k < channels; ++k) {
        const std::uint32_t *const first = bins + k * kHistogramBins;
        maxima[static_cast<std::size_t>(k)] =
            std::max(1u, *std::max_element(first, first + kHistogramBins));
    }
    return maxima;
}

void HistogramMerge::finish_shared(std::uint32_t *bins) const {
    const auto stride = static_cast<std::size_t>(plan_.rgb.stride);
    for (int part = 0; part < parts_; ++part) {
        const std::uint32_t *const sums =
            sums_.data() + static_cast<std::size_t>(part) * plan_.rgb.slot_cells();
        for (std::size_t c = 0; c < static_cast<std::size_t>(plan_.classes.count); ++c) {
            const int bin = plan_.classes.bin[c];
            if (bin < 0) continue;
            for (std::size_t k = 0; k < 3; ++k) {
                bins[static_cast<int>(k) * kHistogramBins + bin] += sums[k * stride + c];
            }
        }
    }
}

void HistogramMerge::finish_strips(std::uint32_t *bins, int channels) const {
    for (int strip = 0; strip < plan_.strips; ++strip) {
        const std::uint32_t *counts = sampler_.strip_bins(strip);
        if (counts == nullptr) continue;
        for (int set = 0; set < kBinSets; ++set, counts += kBinSetCells) {
            for (int k = 0; k < channels; ++k) {
                for (int bin = 0; bin < kHistogramBins; ++bin) {
                    bins[k * kHistogramBins + bin] += counts[k * kBinStride + bin];
                }
            }
        }
    }
}

}  // namespace ks
