// Turns the waveform's counts into its trace.
#pragma once

#include <cstdint>
#include <vector>

#include "scopes/merge/count_table.h"
#include "scopes/sampling/sampler.h"

namespace ks {

/// Draws the waveform one bitmap column at a time, from the source columns that light it, in their
/// order. The colours come out as plotting every sample would leave them:
///   float  within 1e-5. Columns where the roundings of that many additions could amount to more
///          are plotted sample by sample;
///   8 bit  equal. A plot adds a fixed number of codes unless its colour lies closer than 1/25000
///          below a whole number of them; columns with such a plot are plotted sample by sample;
///   16 bit equal, except that a plot whose colour lies within 1/1024 below a whole number of codes
///          may add one code more, so that each such hit may be one code off until full scale.
/// Alpha is equal without sub-pixel plotting. With it, plots of different weight meet in a pixel,
/// and its truncations depend on their order: it follows the untruncated rule then, cut to a whole
/// number of full plots at 8 and 16 bits, but for columns that are plotted sample by sample. (The
/// panel is made opaque before it is shown.)
template <class P>
class WaveformMerge {
  public:
    explicit WaveformMerge(const Sampler &sampler);

    /// Bitmap columns first() .. first() + columns() - 1 are lit, or none.
    [[nodiscard]] int first() const { return first_; }
    [[nodiscard]] int columns() const { return columns_; }

    /// Floats that draw_column needs.
    [[nodiscard]] std::size_t scratch_size() const;

    /// Draws bitmap column `x`. Different columns may be drawn at once. [worker]
    void draw_column(int x, float *scratch) const;

  private:
    /// What one hit of a slot adds to a bitmap column.
    struct Increments {
        float luma[3]{};  ///< red, green, blue
        float trace = 0;  ///< the red trace's red, and so on
        float plots = 0;  ///< full-weight plots that it amounts to, for alpha
        bool certain = true;
    };
    /// Plots in a run of rows.
    struct RowHits {
        static constexpr int kRows = 64;
        std::uint16_t luma[kRows]{};
        std::uint16_t traces[3][kRows]{};  ///< red, green, blue
    };
    struct SlotSplit {
        int first = 0;  ///< bitmap column; the second is the next
        Increments increments[2];
    };

    Increments increments(float weight) const;
    std::vector<SlotSplit> split_slots(const ColumnSlots &slots) const;
    bool certain(int x, const std::vector<SlotSplit> &splits) const;
    bool drifts(int x, float *const (&sums)[4]) const;
    void count_hits(int x, int first, int count, RowHits &hits) const;
    bool drifts_at(int x, int row, float *const (&sums)[4]) const;
    void add_luma(int x, float *const (&sums)[4]) const;
    void add_traces(int x, float *classes, float *const (&sums)[4]) const;
    void write_column(int x, float *const (&sums)[4]) const;
    void plot_samples(int x) const;

    const Sampler &sampler_;
    const SamplePlan &plan_;
    const ScopeSampleContext &context_;
    Colour traces_[3];  ///< red, green, blue, with the gain
    CountTable<P> alpha_;
    std::vector<SlotSplit> rgb_, luma_;
    int first_ = 0;
    int columns_ = 0;
};

}  // namespace ks
