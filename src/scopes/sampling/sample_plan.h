// How one frame is sampled: what is counted where, and the memory for it. No host types.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "scopes/context/vector_map.h"
#include "scopes/sampling/arena.h"
#include "scopes/sampling/column_slots.h"
#include "scopes/sampling/value_classes.h"

namespace ks {

/// Counters of one kind: for each slot of columns, `planes` runs of `stride` cells.
struct CounterFamily {
    int planes = 0;  ///< 0 for counters that nothing needs
    int stride = 0;  ///< cells of one plane, a multiple of eight; the last used one may be a spare
    ColumnSlots slots;
    std::vector<std::uint32_t> cell_of_column;  ///< first cell of each sampled column's slot
    ArenaSpan<std::uint16_t> cells;

    [[nodiscard]] std::size_t slot_cells() const {
        return static_cast<std::size_t>(planes) * static_cast<std::size_t>(stride);
    }
};

/// The vectorscope's counters: a few grids, each lent to one worker at a time, added up at the end.
struct VectorGrids {
    VectorMap map;
    int count = 0;               ///< grids, 0 while the vectorscope is off
    std::size_t cell_bytes = 0;  ///< 4 for counts, else a ColourCell
    ArenaSpan<std::byte> memory;

    [[nodiscard]] std::size_t grid_bytes() const {
        return (map.cells() * cell_bytes + ArenaPlan::kLine - 1) / ArenaPlan::kLine *
               ArenaPlan::kLine;
    }
};

/// Cells of one histogram channel in a strip: the bins, then a spare one, on whole cache lines.
inline constexpr int kBinStride = kHistogramBins + 16;
/// A strip has several sets of three channels, which are added up in the end.
inline constexpr int kBinSets = 4;
inline constexpr int kBinSetCells = 3 * kBinStride;
inline constexpr int kStripBins = kBinSets * kBinSetCells;

/// What the workers do with every run of samples.
enum class Consumer {
    kRgbCodes,        ///< count R, G, B by value into `rgb`, at 8 and 16 bits
    kRgbRows,         ///< count R, G, B by row of the waveform into `rgb`, at float
    kLumaRows,        ///< count Y by row of the waveform into `luma`
    kParadeRows,      ///< count R, G, B by row of the parade into `parade`
    kDifferenceRows,  ///< count Y, Cb, Cr by their rows of the parade into `parade`
    kRgbBins,         ///< count R, G, B by bin into `bins`
    kLumaBins,        ///< count Y by bin into `bins`
    kPlaces,          ///< count places in the vectorscope
    kColours          ///< gather colours by place in the vectorscope
};

/// The scopes that draw from `rgb`: its counts serve all of them at once.
struct RgbUses {
    bool waveform = false;
    bool parade = false;
    bool histogram = false;

    [[nodiscard]] bool any() const { return waveform || parade || histogram; }
};

/// Made once per frame by make_sample_plan; the workers only read it. Holds the address of its
/// context.
struct SamplePlan {
    const ScopeSampleContext *context = nullptr;
    int columns = 0;  ///< sampled columns of a row
    int strips = 0;
    int rows = 0;  ///< picture rows that may be sampled

    std::vector<Consumer> consumers;
    bool needs_block = false;  ///< samples are needed as floats
    bool checks_range = false;

    RgbUses rgb_uses;

    RowMap waveform_rows;
    std::array<RowMap, 3> parade_rows;
    ValueClasses classes;  ///< of `rgb`
    CounterFamily rgb, luma, parade;
    ArenaSpan<std::uint32_t> bins;  ///< kStripBins per strip
    VectorGrids vectorscope;

    std::size_t bytes = 0;  ///< of the block that the counters need

    [[nodiscard]] bool has(Consumer consumer) const {
        return std::find(consumers.begin(), consumers.end(), consumer) != consumers.end();
    }
};

/// Bytes that the vectorscope's grids may take together; at least one grid is always made.
inline constexpr std::size_t kVectorGridBudget = std::size_t{24} << 20;

/// Plans the pass for `context`, whose pixel format must be a known one and whose panels must be
/// set. `threads` is the number of workers that may run at once, 0 or less for unknown. Picture
/// rows beyond 65535, far more than a host has, are not sampled.
SamplePlan make_sample_plan(const ScopeSampleContext &context, int threads);

}  // namespace ks
