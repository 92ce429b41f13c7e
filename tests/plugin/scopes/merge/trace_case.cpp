#include "plugin/scopes/merge/trace_case.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <thread>

#include "pixels/depth.h"
#include "scopes/context/context_setup.h"
#include "scopes/merge/merger.h"

namespace ks {

FormatCode format_of(oracle::Depth depth) {
    switch (depth) {
        case oracle::Depth::kByte:
            return kFormat8;
        case oracle::Depth::kWord:
            return kFormat16;
        default:
            return kFormatF;
    }
}

namespace {

std::size_t pixel_bytes(FormatCode format) {
    return format == kFormat8 ? 4 : format == kFormat16 ? 8 : 16;
}

TracePanel make_panel(int width, int height, FormatCode format) {
    TracePanel panel{width, height, 0, {}};
    panel.row_bytes = static_cast<std::int64_t>(pixel_bytes(format)) * (width + 5);
    panel.bytes.resize(static_cast<std::size_t>(panel.row_bytes) *
                       static_cast<std::size_t>(std::max(height, 1)));
    return panel;
}

const void *picture_bytes(const oracle::Image &image) {
    switch (image.depth) {
        case oracle::Depth::kByte:
            return image.bytes8.data();
        case oracle::Depth::kWord:
            return image.words16.data();
        default:
            return image.floats.data();
    }
}

/// The picture with padded rows, and the view of it; odd widths stand on their heads.
struct PaddedPicture {
    TracePanel panel;
    WorldView view;

    explicit PaddedPicture(const oracle::Image &image)
        : panel(make_panel(image.width, image.height, format_of(image.depth))), view(panel.view()) {
        if (image.width % 2 != 0 && image.height > 0) {
            view.base = panel.bytes.data() + (image.height - 1) * panel.row_bytes;
            view.row_bytes = -panel.row_bytes;
        }
        const std::size_t row =
            pixel_bytes(format_of(image.depth)) * static_cast<std::size_t>(image.width);
        const auto *from = static_cast<const std::byte *>(picture_bytes(image));
        for (int y = 0; y < image.height; ++y) {
            std::memcpy(view.pixel<std::byte>(0, y), from + static_cast<std::size_t>(y) * row, row);
        }
    }
};

ScopeSettings settings_of(const oracle::ScopeSettings &s) {
    ScopeSettings settings;
    settings.luma_math = s.luma_math == 2 ? LumaMath::k709 : LumaMath::k601;
    settings.quality = s.quality;
    settings.max_waveform_scale = s.max_waveform;
    settings.waveform_mode = trace_mode(s.waveform_channels);
    settings.waveform_brightness = s.brightness[oracle::kWaveform];
    settings.vectorscope_brightness = s.brightness[oracle::kVectorscope];
    settings.parade_brightness = s.brightness[oracle::kParade];
    settings.monochrome = s.monochrome;
    settings.calibrate_for = s.calibrate;
    settings.parade_mode = s.view_channels == 2 ? ParadeMode::kYCbCr : ParadeMode::kRgb;
    settings.slice_mode = trace_mode(s.slice_channels);
    settings.histogram_mode =
        s.histogram_channels == 2 ? HistogramMode::kLuma : HistogramMode::kRgb;
    settings.histogram_height = s.histogram_height;
    return settings;
}

LayoutUnits units_of(const oracle::ScopeSettings &s) {
    FrameScale frame = make_frame_scale({s.par_num, static_cast<std::uint32_t>(s.par_den)},
                                        {1, static_cast<std::uint32_t>(s.downsample_x_den)},
                                        {1, static_cast<std::uint32_t>(s.downsample_y_den)});
    return layout_units(label_scale(s.layer_width, s.output_width), frame);
}

template <class F>
void run_parts(const TraceRun &run, F &&part) {
    std::vector<int> order(static_cast<std::size_t>(run.parts));
    for (int i = 0; i < run.parts; ++i) order[static_cast<std::size_t>(i)] = i;
    if (run.order == PartOrder::kReversed) std::reverse(order.begin(), order.end());
    if (run.order == PartOrder::kShuffled) {
        std::shuffle(order.begin(), order.end(), std::mt19937(7));  // NOLINT
    }
    if (run.order != PartOrder::kThreads) {
        for (const int i : order) part(i);
        return;
    }
    std::vector<std::thread> threads;
    for (int t = 0; t < run.threads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = t; i < run.parts; i += run.threads) part(i);
        });
    }
    for (std::thread &thread : threads) thread.join();
}

}  // namespace

MeasuredTraces measure(const oracle::Image &source, const oracle::ScopeSettings &settings,
                       const oracle::PanelExtents &extents, const TraceRun &run) {
    MeasuredTraces traces;
    const FormatCode format = format_of(source.depth);
    const PaddedPicture picture(source);
    SampledFrame frame;
    frame.source = picture.view;
    frame.format = format;
    frame.high_quality = settings.sub_pixel;
    traces.bins.assign(768, 0xDEADBEEF);
    frame.histogram_bins = traces.bins.data();
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        frame.switches[kind - 1] = settings.show[kind] ? 1 : 0;
        if (!settings.show[kind]) continue;
        traces.panels[kind] = make_panel(extents[kind].width, extents[kind].height, format);
        frame.panels[kind - 1] = traces.panels[kind].view();
    }
    frame.switches[5] = settings.muted ? 1 : 0;
    traces.context = make_sample_context(frame, settings_of(settings), units_of(settings));
    SamplePlan plan = make_sample_plan(traces.context, run.threads);
    if (run.grids > 0 && run.grids < plan.vectorscope.count) plan.vectorscope.count = run.grids;
    std::vector<std::byte> block(plan.bytes, std::byte{0xCD});
    Sampler sampler(plan, block.data());
    run_parts(run, [&](int i) { sampler.run_part(i, run.parts); });
    const auto merger = make_merger(sampler, run.parts);
    run_parts(run, [&](int i) { merger->run_part(i); });
    traces.context.histogramMax = merger->finish_histogram();
    traces.over_range = sampler.over_range();
    return traces;
}

namespace {

template <class Value>
oracle::Image painted(int width, int height, oracle::Depth depth, Value &&value) {
    oracle::Image image = oracle::make_image(width, height, depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            oracle::Stored pixel;
            for (std::size_t k = 0; k < 4; ++k) {
                const double v = value(x, y, k);
                pixel[k] = depth == oracle::Depth::kFloat
                               ? static_cast<double>(static_cast<float>(v))
                               : std::floor(std::clamp(v, 0.0, 1.0) * oracle::full_scale(depth));
            }
            oracle::store_pixel(image, x, y, pixel);
        }
    }
    return image;
}

}  // namespace

oracle::Image noise_picture(int width, int height, oracle::Depth depth, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> over(-0.3, 1.6), alpha(0.0, 1.0);
    return painted(width, height, depth,
                   [&](int, int, std::size_t k) { return k == 0 ? alpha(random) : over(random); });
}

oracle::Image smooth_picture(int width, int height, oracle::Depth depth, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> grain(-0.02, 0.02);
    return painted(width, height, depth, [&](int x, int y, std::size_t k) {
        if (k == 0) return 1.0;
        const double u = static_cast<double>(x) / width, v = static_cast<double>(y) / height;
        return 0.5 + 0.4 * std::sin(6.0 * u + 3.0 * v + static_cast<double>(k)) + grain(random);
    });
}

oracle::Image wild_picture(int width, int height, oracle::Depth depth, std::uint32_t seed) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr std::array<float, 20> kValues{
        0.0f,   -0.0f,  1.0f,  1.0001f, 1.00010002f, 1.0002f,  0.5f, -0.25f, 1.2f, 2.0f,
        1e-38f, 1e-45f, -1e6f, 1e6f,    3.4e38f,     -3.4e38f, kInf, -kInf,  kNan, 0.25f};
    oracle::Image image = oracle::make_image(width, height, depth);
    std::mt19937 random(seed);
    const auto below = [&](std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); };
    const auto value = [&] {
        if (depth == oracle::Depth::kByte) return static_cast<float>(below(256));
        if (depth == oracle::Depth::kWord) return static_cast<float>(below(65536));
        return below(2) == 0 ? kValues[below(kValues.size())]
                             : static_cast<float>(below(1025)) / 1024.0f;
    };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            oracle::Stored pixel{value(), value(), value(), value()};
            if (below(4) == 0) pixel[2] = pixel[3] = pixel[1];  // neutral, whatever the value
            oracle::store_pixel(image, x, y, pixel);
        }
    }
    return image;
}

void make_opaque(oracle::Image &image) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            oracle::Stored pixel = oracle::stored_pixel(image, x, y);
            pixel[0] = oracle::full_scale(image.depth);
            oracle::store_pixel(image, x, y, pixel);
        }
    }
}

oracle::Image flat_picture(int width, int height, oracle::Depth depth,
                           const std::array<double, 4> &argb) {
    return painted(width, height, depth, [&](int, int, std::size_t k) { return argb[k]; });
}

}  // namespace ks
