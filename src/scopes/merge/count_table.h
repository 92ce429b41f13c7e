// What a pixel holds after a number of equal plots. [host thread]
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pixels/plot.h"

namespace ks {

/// Entry n is a cleared pixel after `n` additive, clamping plots of one colour, each truncated as
/// its depth does. Built by plotting, since no closed formula follows the truncations: 8-bit alpha,
/// for one, stops short of full scale. The table ends where a further plot changes nothing, or with
/// its kMaxEntries-th entry (colours that faint are beyond the brightness sliders' range).
template <class P>
class CountTable {
  public:
    static constexpr std::size_t kMaxEntries = 1u << 16;

    explicit CountTable(const Colour &colour) {
        P pixel{};
        entries_.push_back(pixel);
        while (entries_.size() < kMaxEntries) {
            blend_pixel(pixel, colour, kPlotAdditive | kPlotClampFloat);
            if (same(pixel, entries_.back())) break;
            entries_.push_back(pixel);
        }
    }

    /// The pixel after `hits` plots.
    [[nodiscard]] const P &after(std::size_t hits) const {
        return hits < entries_.size() ? entries_[hits] : entries_.back();
    }

  private:
    static bool same(const P &a, const P &b) {
        return a.alpha == b.alpha && a.red == b.red && a.green == b.green && a.blue == b.blue;
    }

    std::vector<P> entries_;
};

}  // namespace ks
