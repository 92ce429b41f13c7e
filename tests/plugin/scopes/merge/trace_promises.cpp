#include "plugin/scopes/merge/trace_promises.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "oracle/scope_oracle_pixels.h"

namespace ks {
namespace {

using oracle::Depth;
using oracle::Stored;

std::size_t pixel_index(int width, int x, int y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
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

/// How far a channel's codes lie below the next whole number, at most 1.
double below_whole(float channel, double full) {
    const double codes = static_cast<double>(channel) * full;
    return 1.0 - (codes - std::floor(codes));
}

/// What the waveform's plots in one pixel leave open.
struct WaveformHits {
    std::uint32_t uncertain = 0;  ///< plots that may add one code more, at 16 bits
    double plots = 0.0;           ///< full plots that they amount to, for alpha

    /// `full_fade`: log(1 - alpha) of a full plot.
    void add(const oracle::Colour &colour, double full_fade) {
        uncertain += std::any_of(colour.begin() + 1, colour.end(), [](float channel) {
            return below_whole(channel, 32768.0) <= 1.0 / 1024;
        });
        plots += std::log1p(-static_cast<double>(colour[0])) / full_fade;
    }
};

/// What the colours gathered in one vectorscope pixel leave open, by channel.
struct ColourHits {
    std::uint32_t uncertain[3]{};
    double subtracted[3]{};  ///< sum of the negative colours' magnitudes
    double rounded = 0.0;    ///< most that float additions and sums are rounded by together
    bool beyond = false;     ///< some colour is not within +-64

    void add(const oracle::Colour &colour, Depth depth) {
        const bool word = depth == Depth::kWord;
        const double full = word ? 32768.0 : 255.0, margin = word ? 1e-3 : 1e-4;
        rounded += 0x1p-25 + 0x1p-30;
        for (std::size_t k = 0; k < 3; ++k) {
            const float channel = colour[k + 1];
            if (below_whole(channel, full) <= margin) ++uncertain[k];
            if (channel < 0.0f) subtracted[k] -= static_cast<double>(channel);
        }
        for (const float channel : colour) beyond = beyond || !(std::abs(channel) <= 64.0f);
    }
};

/// What is expected of a case, and what its plots leave open.
struct Expectation {
    oracle::ScopeContext context;
    oracle::ScopeTraces traces;
    std::vector<WaveformHits> waveform;   ///< by pixel_index; none where alpha and codes are equal
    std::vector<ColourHits> vectorscope;  ///< by pixel_index; none in monochrome

    [[nodiscard]] float full_alpha() const {
        return context.rgb_colours[0][0] * context.waveform_gain;
    }
};

bool splits_codes(const TraceCase &c) {
    return c.source.depth != Depth::kFloat && c.settings.sub_pixel;
}

Expectation expectation_of(const TraceCase &c, const oracle::PanelExtents &shown) {
    Expectation e{oracle::set_up_scopes(c.settings, c.source, shown),
                  oracle::empty_traces(shown, c.source.depth),
                  {},
                  {}};
    const oracle::Image &waveform = e.traces.panels[oracle::kWaveform];
    const oracle::Image &vectorscope = e.traces.panels[oracle::kVectorscope];
    if (splits_codes(c) || c.source.depth == Depth::kWord) {
        e.waveform.resize(pixel_index(waveform.width, 0, waveform.height));
    }
    if (!c.settings.monochrome) {
        e.vectorscope.resize(pixel_index(vectorscope.width, 0, vectorscope.height));
    }
    const double full_fade = std::log1p(-static_cast<double>(e.full_alpha()));
    const auto note = [&](int kind, int x, int y, const oracle::Colour &colour) {
        if (kind == oracle::kWaveform && !e.waveform.empty()) {
            e.waveform[pixel_index(waveform.width, x, y)].add(colour, full_fade);
        }
        if (kind == oracle::kVectorscope && !e.vectorscope.empty()) {
            e.vectorscope[pixel_index(vectorscope.width, x, y)].add(colour, c.source.depth);
        }
    };
    oracle::sample_picture(c.source, e.context, c.run.parts, e.traces, note);
    return e;
}

/// Entry n is the stored alpha after n plots of `alpha`, up to where further plots change nothing.
std::vector<double> alpha_after_plots(Depth depth, float alpha) {
    std::vector<double> after{0.0};
    oracle::Image pixel = oracle::make_image(1, 1, depth);
    oracle::with_depth(depth, [&](auto of_depth) {
        const oracle::TypedPicture<decltype(of_depth)::value> picture(pixel);
        for (;;) {
            oracle::plot_trace(picture, 0, 0, {alpha, 0.0f, 0.0f, 0.0f});
            const double stored = oracle::stored_pixel(pixel, 0, 0)[0];
            if (stored == after.back()) break;
            after.push_back(stored);
        }
    });
    return after;
}

/// Alpha after the plots, one more or fewer where their number is close to a whole one.
bool is_alpha_of(double alpha, double plots, const std::vector<double> &after_plots) {
    const double slack = 1e-2 + 1e-5 * plots;
    const auto after = [&](double n) {
        const auto whole = static_cast<std::size_t>(std::max(n, 0.0));
        return after_plots[std::min(whole, after_plots.size() - 1)];
    };
    return alpha >= after(plots - slack) && alpha <= after(plots + slack);
}

void expect_waveform(const TraceCase &test, MeasuredTraces &got, const Expectation &expected,
                     PromiseCount &count) {
    const Depth depth = test.source.depth;
    const bool split_codes = splits_codes(test);
    const oracle::Image &panel = expected.traces.panels[oracle::kWaveform];
    std::vector<double> after_plots;
    if (split_codes) after_plots = alpha_after_plots(depth, expected.full_alpha());
    std::size_t failures = 0;
    const auto check = [&](int x, int y, const Stored &p, const Stored &want) {
        WaveformHits at;
        if (!expected.waveform.empty()) at = expected.waveform[pixel_index(panel.width, x, y)];
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
            kept = kept && std::abs(p[0] - want[0]) <= (test.settings.sub_pixel ? 1e-4 : 1e-5);
        } else if (p[0] != want[0]) {
            kept = kept && split_codes && is_alpha_of(p[0], at.plots, after_plots);
        }
        if (want != Stored{}) ++count.lit;
        if (at.uncertain > 0) ++count.uncertain;
        if (at.uncertain > 0 && off) ++count.off;
        if (!kept && ++failures <= 3) ADD_FAILURE() << pixel_text("waveform", x, y, p, want);
    };
    for_pixels(got.panels[oracle::kWaveform], depth, panel, check);
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

bool is_opaque(const oracle::Image &image) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const double alpha = oracle::stored_pixel(image, x, y)[0];
            if (!(alpha == oracle::full_scale(image.depth))) return false;
        }
    }
    return true;
}

/// The vectorscope in the samples' colours.
void expect_colours(const TraceCase &c, MeasuredTraces &got, const Expectation &expected,
                    PromiseCount &count) {
    const Depth depth = c.source.depth;
    const oracle::Image &panel = expected.traces.panels[oracle::kVectorscope];
    const bool opaque = is_opaque(c.source);
    std::size_t failures = 0;
    const auto check = [&](int x, int y, const Stored &p, const Stored &want) {
        const ColourHits &at = expected.vectorscope[pixel_index(panel.width, x, y)];
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
    for_pixels(got.panels[oracle::kVectorscope], depth, panel, check);
    EXPECT_EQ(failures, 0u) << "vectorscope pixels in the samples' colours";
}

}  // namespace

PromiseCount expect_promises(const TraceCase &c) {
    PromiseCount count;
    oracle::PanelExtents shown{};
    for (std::size_t kind = 1; kind < shown.size(); ++kind) {
        if (c.settings.show[kind]) shown[kind] = c.extents[kind];
    }
    const Expectation expectation = expectation_of(c, shown);
    const oracle::ScopeTraces &expected = expectation.traces;
    MeasuredTraces got = measure(c.source, c.settings, shown, c.run);
    if (c.settings.show[oracle::kWaveform]) {
        expect_waveform(c, got, expectation, count);
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
            expect_colours(c, got, expectation, count);
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
