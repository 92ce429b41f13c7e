#include "scopes/sampling/column_slots.h"

#include <cmath>

#include "geometry/frame_scale.h"

namespace ks {

ColumnSlots make_column_slots(int columns, int step, int rows,
                              const std::function<std::int64_t(int column)> &key) {
    constexpr int kMaxCount = 65535;
    const int most = rows > 0 ? kMaxCount / rows : kMaxCount;
    ColumnSlots slots;
    slots.of_column.resize(static_cast<std::size_t>(columns));
    std::int64_t last_key = 0;
    int members = 0;
    for (int j = 0; j < columns; ++j) {
        const std::int64_t k = key(j * step);
        if (j % kStripColumns == 0 || k != last_key || members >= most) {
            slots.column.push_back(static_cast<std::uint32_t>(j * step));
            slots.strip.push_back(static_cast<std::uint32_t>(j / kStripColumns));
            last_key = k;
            members = 0;
        }
        ++members;
        slots.of_column[static_cast<std::size_t>(j)] =
            static_cast<std::uint32_t>(slots.column.size() - 1);
    }
    return slots;
}

int parade_dx(const ScopeSampleContext &context, int column) {
    return trunc_to_int(static_cast<double>(column) * context.paradeXScale);
}

ColumnSplit split_column(const ScopeSampleContext &context, int column) {
    const double x = waveform_x(context, column);
    if (context.subPixel != 1) return {trunc_to_int(x), 1.0f, 0.0f};
    const double whole = std::floor(x);
    const int at = trunc_to_int(whole);
    const double f = x - whole;
    if (f > 0.5) return {at, static_cast<float>(1.0 - (f - 0.5)), static_cast<float>(f - 0.5)};
    if (f < 0.5) {
        return {at - 1, static_cast<float>(0.5 - f), static_cast<float>(1.0 - (0.5 - f))};
    }
    return {at, 1.0f, 0.0f};
}

}  // namespace ks
