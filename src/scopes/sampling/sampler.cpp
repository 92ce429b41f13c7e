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

/// Where a run's samples are counted; what nothing needs leads nowhere.
struct RunCounters {
    FamilyCells rgb, luma, parade;
    std::uint32_t *bins;
    std::byte *grid;
};

template <class P>
void count_block(Consumer consumer, const SamplePlan &plan, const SampleBlock &block,
                 const RunCounters &to) {
    const std::array<const float *, 3> channels{block.red, block.green, block.blue};
    switch (consumer) {
        case Consumer::kRgbCodes:
            break;  // needs no block
        case Consumer::kRgbRows:
            count_rows(channels, block.count, plan.waveform_rows, to.rgb);
            break;
        case Consumer::kLumaRows:
            count_rows<1>({block.luma}, block.count, plan.waveform_rows, to.luma);
            break;
        case Consumer::kParadeRows:
            count_rows(channels, block.count, plan.parade_rows[0], to.parade);
            break;
        case Consumer::kDifferenceRows:
            count_difference(block, plan.parade_rows, to.parade);
            break;
        case Consumer::kRgbBins:
            count_bins(channels, block.count, to.bins);
            break;
        case Consumer::kLumaBins:
            count_bins<1>({block.luma}, block.count, to.bins);
            break;
        case Consumer::kPlaces:
            count_vectors(block, plan.vectorscope.map, reinterpret_cast<std::uint32_t *>(to.grid));
            break;
        case Consumer::kColours:
            gather_vectors<P>(block, plan.vectorscope.map, plan.context->vectorscopeGain * 0.2f,
                              reinterpret_cast<ColourCell<P> *>(to.grid));
            break;
    }
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
        if (plan_.vectorscope.count != 0) lease.emplace(grids_);
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
    SampleBlock block;
    if (plan_.needs_block) {
        load_block(first, c.stepX, count, block);
        if (c.needLuma != 0) fill_luma(c.lumaMath, block);
    }
    const RunCounters counters{cells(plan_.rgb, column), cells(plan_.luma, column),
                               cells(plan_.parade, column), strip_bins_at(column / kStripColumns),
                               grid};
    for (const Consumer consumer : plan_.consumers) {
        if (consumer != Consumer::kRgbCodes) {
            count_block<P>(consumer, plan_, block, counters);
        } else if constexpr (!kIsFloatPixel<P>) {
            count_codes(first, c.stepX, count, plan_.classes, counters.rgb);
        }
    }
    return plan_.checks_range && any_over_range(block, c.needLuma != 0);
}

FamilyCells Sampler::cells(const CounterFamily &family, int column) const {
    return {arena_.at(family.cells), family.cell_of_column.data() + column,
            static_cast<std::size_t>(family.stride)};
}

void Sampler::clear_slots(const CounterFamily &family, int strip) {
    if (family.planes == 0) return;
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
    if (plan_.bins.count != 0) {
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
