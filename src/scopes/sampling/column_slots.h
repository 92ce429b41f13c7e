// Which sampled source columns share a set of counters.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "scopes/context/sample_context.h"

namespace ks {

/// Sampled columns per strip. One strip's counters and picture rows stay in the processor's first
/// cache levels, and a strip is what one worker at a time writes.
inline constexpr int kStripColumns = 64;

/// Sampled columns are numbered 0, 1, ...: number j is source column j * stepX.
struct ColumnSlots {
    std::vector<std::uint32_t> of_column;  ///< slot of each sampled column, ascending
    std::vector<std::uint32_t> column;     ///< source column of each slot's first member
    std::vector<std::uint32_t> strip;      ///< strip that each slot lies in

    [[nodiscard]] int count() const { return static_cast<int>(column.size()); }
};

/// Gives neighbouring columns with the same key one slot. A slot does not cross the border of a
/// strip, and takes so few columns that a 16-bit counter of it cannot overflow in `rows` rows.
ColumnSlots make_column_slots(int columns, int step, int rows,
                              const std::function<std::int64_t(int column)> &key);

/// Position of a source column in the waveform's bitmap, pixel centres at +0.5.
inline double waveform_x(const ScopeSampleContext &context, int column) {
    return static_cast<double>(column) * context.waveformXScale + context.waveformLeft + 0.5;
}

/// Column of the parade's traces, from each column's anchor, that a source column falls on.
int parade_dx(const ScopeSampleContext &context, int column);

/// The two neighbouring bitmap columns that a waveform sample lights, and with what weight.
struct ColumnSplit {
    int first = 0;
    float weight_first = 1.0f;
    float weight_second = 0.0f;  ///< of column first + 1; 0 when only one is lit
};

/// Without sub-pixel plotting the position is truncated and its column takes everything.
ColumnSplit split_column(const ScopeSampleContext &context, int column);

}  // namespace ks
