#include "scopes/merge/parade_merge.h"

#include <algorithm>

#include "scopes/merge/column_sums.h"

namespace ks {

template <class P>
ParadeMerge<P>::ParadeMerge(const Sampler &sampler)
    : sampler_(sampler),
      plan_(sampler.plan()),
      context_(*plan_.context),
      family_(plan_.rgb_uses.parade ? plan_.rgb : plan_.parade),
      by_class_(plan_.rgb_uses.parade),
      tables_{CountTable<P>(context_.paradeColours[0]), CountTable<P>(context_.paradeColours[1]),
              CountTable<P>(context_.paradeColours[2])} {
    if (family_.planes == 0) return;
    for (int slot = 0; slot < family_.slots.count(); ++slot) {
        const int column = static_cast<int>(family_.slots.column[static_cast<std::size_t>(slot)]);
        const int dx = parade_dx(context_, column);
        if (groups_.empty() || groups_.back().dx != dx) groups_.push_back({dx, slot, slot});
        groups_.back().last_slot = slot;
    }
}

template <class P>
std::size_t ParadeMerge<P>::scratch_size() const {
    return static_cast<std::size_t>(family_.stride) +
           static_cast<std::size_t>(plan_.parade_rows[0].rows()) + 1;
}

template <class P>
void ParadeMerge<P>::draw_position(int index, std::uint32_t *scratch) const {
    const Group &group = groups_[static_cast<std::size_t>(index)];
    const auto stride = static_cast<std::size_t>(family_.stride);
    for (std::size_t k = 0; k < 3; ++k) {
        std::fill(scratch, scratch + scratch_size(), 0u);
        for (int slot = group.first_slot; slot <= group.last_slot; ++slot) {
            const std::uint16_t *const cells = sampler_.slot_cells(family_, slot);
            if (cells != nullptr) add_counts(cells + k * stride, stride, scratch);
        }
        const std::uint32_t *counts = scratch;
        if (by_class_) {
            std::uint32_t *const rows = scratch + stride;
            for (int i = 0; i < plan_.classes.count; ++i) {
                const auto c = static_cast<std::size_t>(i);
                rows[plan_.classes.parade_row[c]] += scratch[c];
            }
            counts = rows;
        }
        draw_column(k, context_.paradeColumns[k] + group.dx, counts);
    }
}

template <class P>
void ParadeMerge<P>::draw_column(std::size_t k, int x, const std::uint32_t *counts) const {
    const WorldView &bitmap = context_.paradeBitmap;
    if (x < 0 || x >= bitmap.width) return;
    const RowMap &map = plan_.parade_rows[k];
    const int rows = std::min(map.rows(), bitmap.height - map.top);
    for (int row = 0; row < rows; ++row) {
        if (counts[row] != 0) *bitmap.pixel<P>(x, map.top + row) = tables_[k].after(counts[row]);
    }
}

template class ParadeMerge<Pixel8>;
template class ParadeMerge<Pixel16>;
template class ParadeMerge<PixelF>;

}  // namespace ks
