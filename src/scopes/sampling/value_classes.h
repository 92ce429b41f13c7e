// Sample values sorted into classes that no consumer of the counts can tell apart.
#pragma once

#include <cstdint>
#include <vector>

#include "pixels/pixel_format.h"
#include "scopes/sampling/row_map.h"

namespace ks {

/// One count per class serves the waveform, the parade and the histogram together. 8-bit codes are
/// classes of their own; 16-bit codes are merged; a float's class is its row.
struct ValueClasses {
    int count = 0;
    /// Class of each 16-bit code, the ones above full scale included; empty at the other depths.
    std::vector<std::uint16_t> of_code;
    // By class.
    std::vector<std::int32_t> waveform_row;
    std::vector<std::int32_t> parade_row;
    std::vector<std::int32_t> bin;  ///< histogram bin, -1 for values that are not counted
};

/// Histogram bin of a value: trunc(v * 255) for 0 < v <= 1, else -1.
inline int histogram_bin(float value) {
    return value > 0.0f && value <= 1.0f ? static_cast<int>(value * 255.0f) : -1;
}

/// Classes of pixel type P. Maps without rows (scopes that are off) tell nothing apart. At float
/// the classes are the rows of `waveform`, the spare one included, and the bins mean nothing.
template <class P>
ValueClasses make_value_classes(const RowMap &waveform, const RowMap &parade, bool histogram);

}  // namespace ks
