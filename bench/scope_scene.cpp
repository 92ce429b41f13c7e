#include "scope_scene.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include "geometry/frame_scale.h"
#include "geometry/scope_panel.h"
#include "scope_pictures.h"
#include "scopes/merge/merger.h"
#include "stage/host/schedule.h"

namespace ks_bench {
namespace {

constexpr double kHistogramHeight = 60.0;

/// A scope's row of what differs between depths.
struct DepthRow {
    int bits;
    ks::oracle::Depth depth;
    ks::FormatCode format;
    std::int64_t pixel_bytes;
};
constexpr DepthRow kDepths[] = {{8, ks::oracle::Depth::kByte, ks::kFormat8, 4},
                                {16, ks::oracle::Depth::kWord, ks::kFormat16, 8},
                                {32, ks::oracle::Depth::kFloat, ks::kFormatF, 16}};

const DepthRow &depth_row(int bits) {
    return *std::find_if(std::begin(kDepths), std::end(kDepths),
                         [bits](const DepthRow &row) { return row.bits == bits; });
}

void *pixels_of(ks::oracle::Image &image) {
    switch (image.depth) {
        case ks::oracle::Depth::kByte:
            return image.bytes8.data();
        case ks::oracle::Depth::kWord:
            return image.words16.data();
        default:
            return image.floats.data();
    }
}

/// As a host hands memory out: not cleared, and given back after the frame.
struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

}  // namespace

std::string SceneKey::path() const {
    return std::to_string(width) + "x" + std::to_string(height) + "/" + std::to_string(bits) +
           "bit/" + preset->name + "/" + picture;
}

ScopeScene::ScopeScene(const SceneKey &key)
    : key_(key),
      source_(ks::oracle::make_image(key.width, key.height, depth_row(key.bits).depth)),
      bins_(3 * ks::kHistogramBins) {
    const DepthRow &row = depth_row(key.bits);
    const std::int64_t row_bytes = key.width * row.pixel_bytes;
    stage::to_rows(scope_picture(key.picture, key.width, key.height),
                   stage::depth_from_bits(key.bits), pixels_of(source_), row_bytes);
    frame_.source = {pixels_of(source_), row_bytes, key.width, key.height};
    frame_.format = row.format;
    frame_.high_quality = true;
    frame_.histogram_bins = bins_.data();
    const bool all = key.preset->all;
    frame_.switches = {1, 1, 1, static_cast<std::uint8_t>(all), static_cast<std::uint8_t>(all), 0};
    settings_.quality = key.preset->quality;
    settings_.waveform_mode = key.preset->waveform_mode;
    units_ = ks::layout_units(ks::label_scale(key.width, key.width),
                              ks::make_frame_scale({1, 1}, {1, 1}, {1, 1}));
    make_panels();
    make_literal();
}

void ScopeScene::make_panels() {
    const ks::FrameScale scale = ks::make_frame_scale({1, 1}, {1, 1}, {1, 1});
    const double aspect = static_cast<double>(key_.height) / key_.width;
    for (std::size_t slot = 0; slot < panels_.size(); ++slot) {
        if (frame_.switches[slot] == 0) continue;
        const bool histogram = ks::kScopeTable[slot].kind == ks::ScopeKind::kHistogram;
        const ks::IntSize size =
            ks::scope_panel_size(ks::kScopeTable[slot].size_rule,
                                 histogram ? kHistogramHeight : key_.preset->size, aspect, scale);
        const std::int64_t row_bytes = size.width * depth_row(key_.bits).pixel_bytes;
        panels_[slot].resize(static_cast<std::size_t>(row_bytes * size.height));
        frame_.panels[slot] = {panels_[slot].data(), row_bytes, size.width, size.height};
        extents_[slot + 1] = {size.width, size.height};
    }
}

void ScopeScene::make_literal() {
    ks::oracle::ScopeSettings settings;
    settings.show = {false, true, true, true, key_.preset->all, key_.preset->all};
    settings.quality = key_.preset->quality;
    settings.waveform_channels = static_cast<int>(key_.preset->waveform_mode);
    settings.sub_pixel = true;
    settings.layer_width = settings.output_width = key_.width;
    literal_ = ks::oracle::set_up_scopes(settings, source_, extents_);
}

ks::ScopeSampleContext ScopeScene::context() const {
    return ks::make_sample_context(frame_, settings_, units_);
}

PassTimes ScopeScene::run_pass(int threads) {
    for (std::vector<std::byte> &panel : panels_) std::ranges::fill(panel, std::byte{0});
    const stage::Schedule schedule =
        threads == 1 ? stage::Schedule::serial() : stage::Schedule::with_threads(threads);
    PassTimes times;
    Stopwatch watch;
    const ks::ScopeSampleContext frame = context();
    const ks::SamplePlan plan = ks::make_sample_plan(frame, threads);
    std::unique_ptr<void, Free> memory(std::malloc(plan.bytes));
    if (memory == nullptr) throw std::bad_alloc();
    ks::Sampler sampler(plan, memory.get());
    times.set_up = watch.lap();
    stage::run_scheduled(schedule, threads, [&](int, std::int64_t part) {
        return sampler.run_part(static_cast<int>(part), threads);
    });
    times.count = watch.lap();
    const std::unique_ptr<ks::Merger> merger = ks::make_merger(sampler, threads);
    stage::run_scheduled(schedule, threads, [&](int, std::int64_t part) {
        merger->run_part(static_cast<int>(part));
        return 0;
    });
    memory.reset();
    times.merge = watch.lap();
    times.bytes = plan.bytes;
    return times;
}

double ScopeScene::run_literal() {
    ks::oracle::ScopeTraces traces = ks::oracle::empty_traces(extents_, source_.depth);
    Stopwatch watch;
    ks::oracle::sample_picture(source_, literal_, 1, traces);
    return watch.lap();
}

std::size_t ScopeScene::accumulator_bytes(int parts) const {
    const ks::ScopeSampleContext frame = context();
    return ks::make_sample_plan(frame, parts).bytes;
}

ScopeScene &scope_scene(const SceneKey &key) {
    static SceneKey kept_key;
    static std::unique_ptr<ScopeScene> kept;
    if (kept == nullptr || kept_key != key) {
        kept.reset();
        kept = std::make_unique<ScopeScene>(key);
        kept_key = key;
        kept->run_pass(1);  // warm
    }
    return *kept;
}

}  // namespace ks_bench
