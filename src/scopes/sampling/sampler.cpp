#include "scopes/sampling/sampler.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "scopes/sampling/counting.h"

namespace ks {
namespace {

/// Rows of other strips pass between two rows of one, so the next is fetched ahead.
template <class P>
void prefetch_run(const P *first, int bytes) {
    const auto *const begin = reinterpret_cast<const char *>(first);
    for (int offset = 0; offset < bytes; offset += 64) _mm_prefetch(begin + offset, _MM_HINT_T0);
}

}  // namespace

Sampler::Sampler(const SamplePlan &plan, void *block)
    : plan_(plan),
      arena_(block),
      grids_(plan.vectorscope, arena_.at(plan.vectorscope.memory)),
      locks_(std::make_unique<std::mutex[]>(static_cast<std::size_t>(plan.strips))),
      touched_(std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(plan.strips))) {}

std::int32_t Sampler::run_part(int part, int parts) {
    const ScopeSampleContext &c = *plan_.context;
    return visit_format(c.pixelFormat, [&]<class P>(P) {
        if (part < 0 || parts <= 0 || plan_.strips == 0) return 0;
        const std::int64_t rows = plan_.rows / parts;
        const std::int64_t first = part * rows;
        if (rows == 0 || first + rows > plan_.rows) return 0;
        parts_.store(parts, std::memory_order_relaxed);
        std::optional<GridPool::Lease> lease;
        if (plan_.vectorscope.on) lease.emplace(grids_);
        // Parts start at different strips, so that they seldom meet at a lock.
        const int start = static_cast<int>(std::int64_t{plan_.strips} * part / parts);
        count_part<P>(static_cast<int>(first), static_cast<int>(first + rows), start,
                      lease ? lease->get() : nullptr);
        return 0;
    });
}

template <class P>
void Sampler::count_part(int first_row, int last_row, int start_strip, std::byte *grid) {
    for (int i = 0; i < plan_.strips; ++i) {
        const int strip = (start_strip + i) % plan_.strips;
        const std::lock_guard lock(locks_[static_cast<std::size_t>(strip)]);
        if (touched_[static_cast<std::size_t>(strip)] == 0) clear_strip(strip);
        count_strip<P>(strip, first_row, last_row, grid);
    }
}

template <class P>
void Sampler::count_strip(int strip, int first_row, int last_row, std::byte *grid) {
    const ScopeSampleContext &c = *plan_.context;
    const int column = strip * kStripColumns;
    const int count = std::min(kStripColumns, plan_.columns - column);
    const int x = column * c.stepX;
    const int bytes = ((count - 1) * c.stepX + 1) * static_cast<int>(sizeof(P));
    bool over = false;
    for (int y = first_row; y < last_row; y += c.stepY) {
        if (y + c.stepY < last_row) prefetch_run(c.source.pixel<P>(x, y + c.stepY), bytes);
        over |= count_run(c.source.pixel<const P>(x, y), column, count, grid);
    }
    if (over) over_range_.store(true, std::memory_order_relaxed);
}

template <class P>
bool Sampler::count_run(const P *first, int column, int count, std::byte *grid) {
    const ScopeSampleContext &c = *plan_.context;
    const auto cells = [&](const CounterFamily &family) {
        return FamilyCells{arena_.at(family.cells), family.cell_of_column.data() + column,
                           static_cast<std::size_t>(family.stride)};
    };
    if constexpr (!kIsFloatPixel<P>) {
        if (plan_.rgb.on) count_codes(first, c.stepX, count, plan_.classes, cells(plan_.rgb));
    }
    if (!plan_.needs_block) return false;
    SampleBlock block;
    load_block(first, c.stepX, count, block);
    if (c.needLuma != 0) fill_luma(c.lumaMath, block);
    if (plan_.luma.on) {
        count_rows<1>({block.luma}, count, plan_.waveform_rows, cells(plan_.luma));
    }
    if (plan_.parade_difference) {
        count_difference(block, plan_.parade_rows, cells(plan_.parade));
    }
    const std::array<const float *, 3> channels{block.red, block.green, block.blue};
    if constexpr (kIsFloatPixel<P>) {
        if (plan_.rgb.on) count_rows(channels, count, plan_.waveform_rows, cells(plan_.rgb));
        if (plan_.parade.on && plan_.parade_rgb) {
            count_rows(channels, count, plan_.parade_rows[0], cells(plan_.parade));
        }
    }
    if (plan_.bins_on()) {
        std::uint32_t *const bins = strip_bins_at(column / kStripColumns);
        if (plan_.histogram_luma) {
            count_bins<1>({block.luma}, count, bins);
        } else {
            count_bins(channels, count, bins);
        }
    }
    if (grid != nullptr && c.monochrome != 0) {
        count_vectors(block, plan_.vectorscope.map, reinterpret_cast<std::uint32_t *>(grid));
    } else if (grid != nullptr) {
        gather_vectors<P>(block, plan_.vectorscope.map, c.vectorscopeGain * 0.2f,
                          reinterpret_cast<ColourCell<P> *>(grid));
    }
    return plan_.checks_range && any_over_range(block, c.needLuma != 0);
}

void Sampler::clear_slots(const CounterFamily &family, int strip) {
    if (!family.on) return;
    const int column = strip * kStripColumns;
    const int last = std::min(column + kStripColumns, plan_.columns) - 1;
    const auto &slots = family.slots.of_column;
    const std::size_t first_slot = slots[static_cast<std::size_t>(column)];
    const std::size_t count = slots[static_cast<std::size_t>(last)] - first_slot + 1;
    std::memset(arena_.at(family.cells) + first_slot * family.slot_cells(), 0,
                count * family.slot_cells() * sizeof(std::uint16_t));
}

void Sampler::clear_strip(int strip) {
    touched_[static_cast<std::size_t>(strip)] = 1;
    clear_slots(plan_.rgb, strip);
    clear_slots(plan_.luma, strip);
    clear_slots(plan_.parade, strip);
    if (plan_.bins_on()) {
        std::memset(strip_bins_at(strip), 0, kStripBins * sizeof(std::uint32_t));
    }
}

const std::uint16_t *Sampler::slot_cells(const CounterFamily &family, int slot) const {
    if (touched_[family.slots.strip[static_cast<std::size_t>(slot)]] == 0) return nullptr;
    return arena_.at(family.cells) + static_cast<std::size_t>(slot) * family.slot_cells();
}

const std::uint32_t *Sampler::strip_bins(int strip) const {
    if (touched_[static_cast<std::size_t>(strip)] == 0) return nullptr;
    return strip_bins_at(strip);
}

std::uint32_t *Sampler::strip_bins_at(int strip) const {
    return arena_.at(plan_.bins) + static_cast<std::size_t>(strip) * kStripBins;
}

}  // namespace ks
