#include "plugin/scopes/merge/trace_promises.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "pixels/depth.h"
#include "scopes/merge/count_table.h"
#include "scopes/sampling/column_slots.h"
#include "scopes/sampling/row_map.h"

namespace ks {
namespace {

using oracle::Depth;
using oracle::Stored;

std::size_t pixel_index(const WorldView &panel, int x, int y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(panel.width) +
           static_cast<std::size_t>(x);
}

/// Calls f(x, y, got, expected) for every pixel of a panel.
template <class F>
void for_pixels(TracePanel &panel, Depth depth, const oracle::Image &expected, F &&f) {
    const WorldView view = panel.view();
    visit_format(format_of(depth), [&]<class P>(P) {
        for (int y = 0; y < panel.height; ++y) {
            for (int x = 0; x < panel.width; ++x) {
                const P &p = *view.pixel<P>(x, y);
                const Stored got{static_cast<double>(p.alpha), static_cast<double>(p.red),
                                 static_cast<double>(p.green), static_cast<double>(p.blue)};
                f(x, y, got, oracle::stored_pixel(expected, x, y));
            }
        }
        return 0;
    });
}

std::string pixel_text(const char *what, int x, int y, const Stored &got, const Stored &want) {
    std::string text =
        std::string(what) + " (" + std::to_string(x) + ", " + std::to_string(y) + "):";
    for (const double v : got) text += " " + std::to_string(v);
    text += ", expected";
    for (const double v : want) text += " " + std::to_string(v);
    return text;
}

/// Calls f(column, pixel as unit-scale floats) for every sample, in the order of a serial run.
template <class F>
void for_samples(const TraceCase &c, const ScopeSampleContext &context, F &&f) {
    const float unit = c.source.depth == Depth::kByte   ? PixelTraits<Pixel8>::kToUnit
                       : c.source.depth == Depth::kWord ? PixelTraits<Pixel16>::kToUnit
                                                        : 1.0f;
    const int rows = c.source.height / c.run.parts;
    for (int part = 0; part < c.run.parts; ++part) {
        for (int y = part * rows; y < (part + 1) * rows; y += context.stepY) {
            for (int x = 0; x < c.source.width; x += context.stepX) {
                const Stored s = oracle::stored_pixel(c.source, x, y);
                f(x, Colour{static_cast<float>(s[0]) * unit, static_cast<float>(s[1]) * unit,
                            static_cast<float>(s[2]) * unit, static_cast<float>(s[3]) * unit});
            }
        }
    }
}

float luma_of(const Colour &c, const ScopeSampleContext &context) {
    if (context.lumaMath == LumaMath::k709) {
        return 0.2126f * c.red + 0.7152f * c.green + 0.0722f * c.blue;
    }
    return 0.299f * c.red + 0.587f * c.green + 0.114f * c.blue;
}

/// How far a channel's codes lie below the next whole number, at most 1.
double below_whole(float channel, double full) {
    const double codes = static_cast<double>(channel) * full;
    return 1.0 - (codes - std::floor(codes));
}

/// What the waveform's hits of one pixel leave open.
struct WaveformHits {
    std::uint32_t uncertain = 0;  ///< plots that may add one code more, at 16 bits
    double plots = 0.0;           ///< full plots that they amount to, for alpha
};

std::vector<WaveformHits> waveform_hits(const TraceCase &test, const ScopeSampleContext &c) {
    const int width = c.waveformBitmap.width, height = c.waveformBitmap.height;
    std::vector<WaveformHits> hits(static_cast<std::size_t>(width) *
                                   static_cast<std::size_t>(height));
    const RowMap map{static_cast<double>(c.waveformBottom),
                     c.valueScale,
                     c.waveformSpan,
                     0.0,
                     c.topY,
                     c.waveformBottom};
    const bool luma = c.waveformMode != TraceMode::kRgb, rgb = c.waveformMode != TraceMode::kLuma;
    const float trace = kRedTrace.red * c.waveformGain;
    const double fade = std::log1p(-static_cast<double>(kRedTrace.alpha * c.waveformGain));
    const auto uncertain = [](float channel) {
        return below_whole(channel, 32768.0) <= 1.0 / 1024;
    };
    for_samples(test, c, [&](int column, const Colour &sample) {
        const ColumnSplit split = split_column(c, column);
        for (const int side : {0, 1}) {
            const float w = side == 0 ? split.weight_first : split.weight_second;
            const int x = split.first + side;
            if (w == 0.0f || x < 0 || x >= width) continue;
            const double plots = std::log1p(-static_cast<double>(kRedTrace.alpha * c.waveformGain) *
                                            static_cast<double>(w)) /
                                 fade;
            const auto hit = [&](float value, bool may_be_off) {
                if (std::isnan(value)) return;
                const int y = map.top + map.row(value);
                if (y >= height) return;
                WaveformHits &at =
                    hits[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x)];
                at.plots += plots;
                if (may_be_off) ++at.uncertain;
            };
            if (luma) {
                hit(luma_of(sample, c), uncertain(c.lumaColour.red * w) ||
                                            uncertain(c.lumaColour.green * w) ||
                                            uncertain(c.lumaColour.blue * w));
            }
            for (const float v : {sample.red, sample.green, sample.blue}) {
                if (rgb) hit(v, uncertain(trace * w));
            }
        }
    });
    return hits;
}

/// Alpha after the plots, one more or fewer where their number is close to a whole one.
template <class P>
bool is_alpha_of(double alpha, double plots, const CountTable<P> &table) {
    const double slack = 1e-2 + 1e-5 * plots;
    const auto after = [&](double n) {
        return static_cast<double>(table.after(static_cast<std::size_t>(std::max(n, 0.0))).alpha);
    };
    return alpha >= after(plots - slack) && alpha <= after(plots + slack);
}

void expect_waveform(const TraceCase &test, MeasuredTraces &got, const oracle::Image &expected,
                     PromiseCount &count) {
    const Depth depth = test.source.depth;
    const ScopeSampleContext &c = got.context;
    const bool split_codes = depth != Depth::kFloat && c.subPixel == 1;
    std::vector<WaveformHits> hits;
    if (split_codes || depth == Depth::kWord) hits = waveform_hits(test, c);
    const Colour full{kRedTrace.alpha * c.waveformGain, 0.0f, 0.0f, 0.0f};
    const CountTable<Pixel8> table8(full);
    const CountTable<Pixel16> table16(full);
    std::size_t failures = 0;
    const auto check = [&](int x, int y, const Stored &p, const Stored &want) {
        WaveformHits at;
        if (!hits.empty()) at = hits[pixel_index(c.waveformBitmap, x, y)];
        bool kept = true, off = false;
        for (std::size_t k = 1; k < 4; ++k) {
            const double less = want[k] - p[k];
            count.worst = std::max(count.worst, std::abs(less));
            if (depth == Depth::kByte) kept = kept && less == 0.0;
            if (depth == Depth::kWord) kept = kept && less >= 0.0 && less <= at.uncertain;
            if (depth == Depth::kFloat) kept = kept && std::abs(less) <= 1e-5;
            off = off || less != 0.0;
        }
        if (depth == Depth::kFloat) {
            kept = kept && std::abs(p[0] - want[0]) <= (c.subPixel == 1 ? 1e-4 : 1e-5);
        } else if (p[0] != want[0]) {
            kept = kept && split_codes &&
                   (depth == Depth::kByte ? is_alpha_of(p[0], at.plots, table8)
                                          : is_alpha_of(p[0], at.plots, table16));
        }
        if (want != Stored{}) ++count.lit;
        if (at.uncertain > 0) ++count.uncertain;
        if (at.uncertain > 0 && off) ++count.off;
        if (!kept && ++failures <= 3) ADD_FAILURE() << pixel_text("waveform", x, y, p, want);
    };
    for_pixels(got.panels[oracle::kWaveform], depth, expected, check);
    EXPECT_EQ(failures, 0u) << "waveform pixels";
}

void expect_equal(const char *what, TracePanel &panel, Depth depth, const oracle::Image &expected,
                  PromiseCount &count) {
    std::size_t failures = 0;
    for_pixels(panel, depth, expected, [&](int x, int y, const Stored &p, const Stored &want) {
        if (want != Stored{}) ++count.lit;
        if (p != want && ++failures <= 3) ADD_FAILURE() << pixel_text(what, x, y, p, want);
    });
    EXPECT_EQ(failures, 0u) << what << " pixels";
}

/// What the colours gathered in one vectorscope pixel leave open, by channel.
struct ColourHits {
    std::uint32_t uncertain[3]{};
    double subtracted[3]{};  ///< sum of the negative colours' magnitudes
    double rounded = 0.0;    ///< most that float additions and sums are rounded by together
    bool beyond = false;     ///< some colour is not within +-64
};

std::vector<ColourHits> colour_hits(const TraceCase &test, const ScopeSampleContext &c) {
    const int width = c.vectorscopeBitmap.width, height = c.vectorscopeBitmap.height;
    std::vector<ColourHits> hits(static_cast<std::size_t>(width) *
                                 static_cast<std::size_t>(height));
    const bool is_709 = c.lumaMath == LumaMath::k709;
    const double kb = is_709 ? 0.3266 : 0.342, kr = is_709 ? 0.5453 : 0.6125;
    const double calibration = static_cast<double>(c.calibrationGain);
    const bool word = test.source.depth == Depth::kWord;
    const double full = word ? 32768.0 : 255.0, margin = word ? 1e-3 : 1e-4;
    for_samples(test, c, [&](int, const Colour &s) {
        const bool neutral = s.red == s.green && s.green == s.blue;
        const float luma = luma_of(s, c);
        const double x =
            static_cast<double>(neutral ? 0.0f : s.blue - luma) * kb * c.cbGain * calibration +
            c.vectorscopeCentreX;
        const double y = c.vectorscopeCentreY - static_cast<double>(neutral ? 0.0f : s.red - luma) *
                                                    kr * c.crGain * calibration;
        if (!(x > -1.0 && x < width && y > -1.0 && y < height)) return;
        ColourHits &at = hits[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                              static_cast<std::size_t>(x)];
        at.rounded += 0x1p-25 + 0x1p-30;
        const float gain = c.vectorscopeGain * 0.2f;
        const float colours[4]{s.red * gain, s.green * gain, s.blue * gain, s.alpha * gain};
        for (std::size_t k = 0; k < 3; ++k) {
            if (below_whole(colours[k], full) <= margin) ++at.uncertain[k];
            if (colours[k] < 0.0f) at.subtracted[k] -= static_cast<double>(colours[k]);
        }
        for (const float colour : colours) at.beyond = at.beyond || !(std::abs(colour) <= 64.0f);
    });
    return hits;
}

bool is_opaque(const oracle::Image &image) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const double alpha = oracle::stored_pixel(image, x, y)[0];
            if (!(alpha == oracle::full_scale(image.depth))) return false;
        }
    }
    return true;
}

}  // namespace

void expect_colour_promise(const TraceCase &c, MeasuredTraces &got, const oracle::Image &expected,
                           PromiseCount &count) {
    const Depth depth = c.source.depth;
    const std::vector<ColourHits> hits = colour_hits(c, got.context);
    const bool opaque = is_opaque(c.source);
    std::size_t failures = 0;
    const auto check = [&](int x, int y, const Stored &p, const Stored &want) {
        const ColourHits &at = hits[pixel_index(got.context.vectorscopeBitmap, x, y)];
        bool kept = true;
        for (std::size_t k = 0; k < 3; ++k) {
            const double less = want[k + 1] - p[k + 1];
            if (depth != Depth::kFloat) {
                kept = kept && less >= 0.0 && less <= at.uncertain[k];
                if (at.uncertain[k] > 0) ++count.uncertain;
                if (at.uncertain[k] > 0 && less != 0.0) ++count.off;
            } else if (!at.beyond) {
                const double near = at.rounded * (1.0 + at.subtracted[k]) + 1e-7;
                kept = kept && less <= near && less >= -at.subtracted[k] - near;
            }
        }
        if (opaque && !at.beyond) kept = kept && p[0] == want[0];
        if (want != Stored{}) ++count.lit;
        if (!kept && ++failures <= 3) ADD_FAILURE() << pixel_text("vectorscope", x, y, p, want);
    };
    for_pixels(got.panels[oracle::kVectorscope], depth, expected, check);
    EXPECT_EQ(failures, 0u) << "vectorscope pixels in the samples' colours";
}

PromiseCount expect_promises(const TraceCase &c) {
    PromiseCount count;
    oracle::PanelExtents shown{};
    for (std::size_t kind = 1; kind < shown.size(); ++kind) {
        if (c.settings.show[kind]) shown[kind] = c.extents[kind];
    }
    oracle::ScopeTraces expected = oracle::empty_traces(shown, c.source.depth);
    oracle::sample_picture(c.source, oracle::set_up_scopes(c.settings, c.source, shown),
                           c.run.parts, expected);
    MeasuredTraces got = measure(c.source, c.settings, shown, c.run);
    if (c.settings.show[oracle::kWaveform]) {
        expect_waveform(c, got, expected.panels[oracle::kWaveform], count);
        EXPECT_EQ(got.over_range, expected.waveform_over_range);
    }
    if (c.settings.show[oracle::kParade]) {
        expect_equal("parade", got.panels[oracle::kParade], c.source.depth,
                     expected.panels[oracle::kParade], count);
        EXPECT_EQ(got.over_range, expected.parade_over_range);
    }
    if (c.settings.show[oracle::kVectorscope]) {
        const oracle::Image &panel = expected.panels[oracle::kVectorscope];
        if (c.settings.monochrome) {
            expect_equal("vectorscope", got.panels[oracle::kVectorscope], c.source.depth, panel,
                         count);
        } else {
            expect_colour_promise(c, got, panel, count);
        }
    }
    if (!c.settings.show[oracle::kHistogram]) return count;
    const std::size_t channels = c.settings.histogram_channels == 2 ? 1 : 3;
    for (std::size_t k = 0; k < channels; ++k) {
        EXPECT_EQ(got.context.histogramMax[k], expected.maxima[k]) << "channel " << k;
        EXPECT_TRUE(std::equal(got.bins.begin() + static_cast<std::ptrdiff_t>(k * 256),
                               got.bins.begin() + static_cast<std::ptrdiff_t>(k * 256 + 256),
                               expected.bins.begin() + static_cast<std::ptrdiff_t>(k * 256)))
            << "bins of channel " << k;
    }
    return count;
}

}  // namespace ks
