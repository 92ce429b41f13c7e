#include "scopes/sampling/sample_plan.h"

#include <algorithm>
#include <thread>

#include "geometry/frame_scale.h"
#include "scopes/sampling/colour_cell.h"

namespace ks {
namespace {

constexpr int kMaxRows = 65535;
constexpr int kMaxGrids = 64;

RowMap waveform_rows(const ScopeSampleContext &c) {
    if (c.waveformOn == 0) return {};
    return {static_cast<double>(c.waveformBottom),
            c.valueScale,
            c.waveformSpan,
            0.0,
            c.topY,
            c.waveformBottom};
}

RowMap parade_rows(const ScopeSampleContext &c, bool lifted) {
    if (c.paradeOn == 0) return {};
    return {static_cast<double>(c.paradeAnchorBottom),
            c.paradeValueScale,
            c.paradeSpan,
            lifted ? c.paradeCentreOffset : 0.0,
            c.topY,
            c.paradeBottom};
}

bool shows_difference(const ScopeSampleContext &c) {
    return c.paradeMode == ParadeMode::kYCbCr;
}

RgbUses rgb_uses(const ScopeSampleContext &c, const SamplePlan &plan) {
    RgbUses uses;
    uses.waveform = plan.waveform_rows.rows() > 0 && c.waveformMode != TraceMode::kLuma;
    const bool parade = plan.parade_rows[0].rows() > 0 && !shows_difference(c);
    if (c.pixelFormat == kFormatF) {
        // What is counted of a float is its row in the waveform.
        uses.parade = parade && uses.waveform && plan.parade_rows[0] == plan.waveform_rows;
    } else {
        uses.parade = parade;
        uses.histogram = c.histogramOn != 0 && c.histogramRgb == HistogramMode::kRgb;
    }
    return uses;
}

std::vector<Consumer> consumers_of(const ScopeSampleContext &c, const SamplePlan &plan) {
    std::vector<Consumer> consumers;
    const bool is_float = c.pixelFormat == kFormatF;
    if (plan.rgb_uses.any() && !is_float) consumers.push_back(Consumer::kRgbCodes);
    if (plan.waveform_rows.rows() > 0 && c.waveformMode != TraceMode::kRgb) {
        consumers.push_back(Consumer::kLumaRows);
    }
    if (plan.rgb_uses.any() && is_float) consumers.push_back(Consumer::kRgbRows);
    if (plan.parade_rows[0].rows() > 0 && !plan.rgb_uses.parade) {
        consumers.push_back(shows_difference(c) ? Consumer::kDifferenceRows
                                                : Consumer::kParadeRows);
    }
    if (c.histogramOn != 0 && !plan.rgb_uses.histogram) {
        consumers.push_back(c.histogramRgb == HistogramMode::kLuma ? Consumer::kLumaBins
                                                                   : Consumer::kRgbBins);
    }
    if (c.vectorscopeOn != 0 && plan.vectorscope.map.width > 0) {
        consumers.push_back(c.monochrome != 0 ? Consumer::kPlaces : Consumer::kColours);
    }
    return consumers;
}

void choose_consumers(const ScopeSampleContext &c, SamplePlan &plan) {
    plan.waveform_rows = waveform_rows(c);
    for (std::size_t k = 0; k < 3; ++k) {
        plan.parade_rows[k] = parade_rows(c, shows_difference(c) && k != 0);
    }
    plan.vectorscope.map = VectorMap(c);
    plan.rgb_uses = rgb_uses(c, plan);
    plan.consumers = consumers_of(c, plan);
    plan.checks_range = c.pixelFormat != kFormat8 && (c.waveformOn != 0 || c.paradeOn != 0);
    plan.needs_block =
        plan.checks_range || std::any_of(plan.consumers.begin(), plan.consumers.end(),
                                         [](Consumer each) { return each != Consumer::kRgbCodes; });
}

int padded(int cells) {
    return (cells + 7) / 8 * 8;
}

void reserve(CounterFamily &family, int planes, int cells, ArenaPlan &arena) {
    family.planes = planes;
    family.stride = padded(cells);
    family.cells = arena.reserve<std::uint16_t>(static_cast<std::size_t>(family.slots.count()) *
                                                family.slot_cells());
    family.cell_of_column.reserve(family.slots.of_column.size());
    for (const std::uint32_t slot : family.slots.of_column) {
        family.cell_of_column.push_back(static_cast<std::uint32_t>(slot * family.slot_cells()));
    }
}

/// Position of a column in the waveform; every column has its own when samples are split.
std::int64_t waveform_key(const ScopeSampleContext &c, int column) {
    return c.subPixel == 1 ? column : split_column(c, column).first;
}

void plan_rgb(const ScopeSampleContext &c, SamplePlan &plan, ArenaPlan &arena) {
    const RgbUses &uses = plan.rgb_uses;
    if (!uses.any()) return;
    plan.rgb.slots = make_column_slots(plan.columns, c.stepX, plan.rows, [&](int column) {
        const std::int64_t waveform = uses.waveform ? waveform_key(c, column) : 0;
        const std::int64_t parade = uses.parade ? parade_dx(c, column) : 0;
        return waveform * (std::int64_t{1} << 32) + parade;
    });
    visit_format(c.pixelFormat, [&]<class P>(P) {
        const RowMap none;
        plan.classes =
            make_value_classes<P>(uses.waveform ? plan.waveform_rows : none,
                                  uses.parade ? plan.parade_rows[0] : none, uses.histogram);
        // At float one spare cell takes what is not a number.
        reserve(plan.rgb, 3, plan.classes.count + (kIsFloatPixel<P> ? 1 : 0), arena);
        return 0;
    });
}

void plan_rows(const ScopeSampleContext &c, SamplePlan &plan, ArenaPlan &arena) {
    if (plan.has(Consumer::kLumaRows)) {
        plan.luma.slots = make_column_slots(plan.columns, c.stepX, plan.rows,
                                            [&](int column) { return waveform_key(c, column); });
        reserve(plan.luma, 1, plan.waveform_rows.rows() + 1, arena);
    }
    if (plan.has(Consumer::kParadeRows) || plan.has(Consumer::kDifferenceRows)) {
        plan.parade.slots = make_column_slots(plan.columns, c.stepX, plan.rows,
                                              [&](int column) { return parade_dx(c, column); });
        reserve(plan.parade, 3, plan.parade_rows[0].rows() + 1, arena);
    }
    if (plan.has(Consumer::kRgbBins) || plan.has(Consumer::kLumaBins)) {
        plan.bins =
            arena.reserve<std::uint32_t>(static_cast<std::size_t>(plan.strips) * kStripBins);
    }
}

void plan_vectorscope(const ScopeSampleContext &c, int threads, SamplePlan &plan,
                      ArenaPlan &arena) {
    const bool gathers = plan.has(Consumer::kColours);
    if (!gathers && !plan.has(Consumer::kPlaces)) return;
    VectorGrids &grids = plan.vectorscope;
    grids.cell_bytes = sizeof(std::uint32_t);
    if (gathers) {
        visit_format(c.pixelFormat, [&]<class P>(P) {
            grids.cell_bytes = sizeof(ColourCell<P>);
            return 0;
        });
    }
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    const int wanted = threads > 0 ? threads : std::max(processors, 1);
    const std::size_t room = std::max<std::size_t>(kVectorGridBudget / grids.grid_bytes(), 1);
    grids.count = static_cast<int>(
        std::min(room, static_cast<std::size_t>(std::clamp(wanted, 1, kMaxGrids))));
    grids.memory =
        arena.reserve<std::byte>(static_cast<std::size_t>(grids.count) * grids.grid_bytes());
}

}  // namespace

SamplePlan make_sample_plan(const ScopeSampleContext &context, int threads) {
    SamplePlan plan;
    plan.context = &context;
    plan.columns = (context.source.width + context.stepX - 1) / context.stepX;
    plan.strips = (plan.columns + kStripColumns - 1) / kStripColumns;
    plan.rows = std::min(context.source.height, kMaxRows);
    choose_consumers(context, plan);
    ArenaPlan arena;
    plan_rgb(context, plan, arena);
    plan_rows(context, plan, arena);
    plan_vectorscope(context, threads, plan, arena);
    plan.bytes = arena.bytes();
    return plan;
}

}  // namespace ks
