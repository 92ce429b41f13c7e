// The sampling pass, one sample after the other.
#include <algorithm>
#include <cmath>

#include "oracle/scope_oracle.h"
#include "oracle/scope_oracle_pixels.h"

namespace ks::oracle {
namespace {

// One part of the pass: a new worker starts with luma 0 and no over-range sample.
template <Depth D>
class Worker {
  public:
    Worker(const Image &source, const ScopeContext &context, ScopeTraces &traces,
           const PlotObserver &observer)
        : source_(source),
          context_(context),
          traces_(traces),
          observer_(observer),
          waveform_(traces.panels[kWaveform]),
          vectorscope_(traces.panels[kVectorscope]),
          parade_(traces.panels[kParade]) {}

    void run(int part, int rows) {
        const auto *data = DepthTraits<D>::data(source_);
        for (int row = part * rows; row < part * rows + rows; row += context_.step) {
            const auto *line = data + static_cast<std::size_t>(row) * source_.width * 4;
            for (int column = 0; column < source_.width; column += context_.step) {
                sample(load_typed<D>(line + static_cast<std::size_t>(column) * 4), column);
            }
        }
    }

  private:
    void sample(const Colour &pixel, int column) {
        if (context_.need_luma) luma_ = trace_luma(pixel, context_.luma_math);
        if (luma_ > kOverRange || pixel[1] > kOverRange || pixel[2] > kOverRange ||
            pixel[3] > kOverRange) {
            over_range_ = true;
        }
        const bool neutral = pixel[1] == pixel[2] && pixel[2] == pixel[3];
        b_minus_y_ = neutral ? 0.0f : pixel[3] - luma_;
        r_minus_y_ = neutral ? 0.0f : pixel[1] - luma_;
        if (context_.show[kWaveform]) waveform_sample(pixel, column);
        if (context_.show[kVectorscope]) vectorscope_sample(pixel);
        if (context_.show[kParade]) parade_sample(pixel, column);
        if (context_.show[kHistogram]) histogram_sample(pixel);
    }

    void plot(int kind, const TypedPicture<D> &panel, int x, int y, const Colour &colour) {
        plot_trace(panel, x, y, colour);
        const bool inside = x >= 0 && y >= 0 && x < panel.width && y < panel.height;
        if (observer_ && inside) observer_(kind, x, y, colour);
    }

    void waveform_sample(const Colour &pixel, int column) {
        const double x = column * context_.waveform_x_scale + context_.waveform.left + 0.5;
        if (!traces_.waveform_over_range) traces_.waveform_over_range = over_range_;
        if (context_.waveform_mode == 1 || context_.waveform_mode == 3) {
            waveform_plot(x, luma_, context_.luma_colour);
        }
        if (context_.waveform_mode == 1 || context_.waveform_mode == 2) {
            waveform_plot(x, pixel[1], times(context_.rgb_colours[0], context_.waveform_gain));
            waveform_plot(x, pixel[2], times(context_.rgb_colours[1], context_.waveform_gain));
            waveform_plot(x, pixel[3], times(context_.rgb_colours[2], context_.waveform_gain));
        }
    }

    void waveform_plot(double x, float value, const Colour &colour) {
        const TraceArea &area = context_.waveform;
        const double level = area.bottom - value * context_.value_scale * area.span;
        if (std::isnan(level)) return;
        const int y = trace_row(level, context_.top, area.bottom);
        if (!context_.sub_pixel) {
            plot(kWaveform, waveform_, truncated(x), y, colour);
            return;
        }
        const double base = std::floor(x);
        const double f = x - base;
        const int left = truncated(base);
        if (f > 0.5) {
            plot(kWaveform, waveform_, left, y, times(colour, static_cast<float>(1.0 - (f - 0.5))));
            plot(kWaveform, waveform_, left + 1, y, times(colour, static_cast<float>(f - 0.5)));
        } else if (f < 0.5) {
            plot(kWaveform, waveform_, left - 1, y, times(colour, static_cast<float>(0.5 - f)));
            plot(kWaveform, waveform_, left, y, times(colour, static_cast<float>(1.0 - (0.5 - f))));
        } else {
            plot(kWaveform, waveform_, left, y, colour);
        }
    }

    void vectorscope_sample(const Colour &pixel) {
        const bool is_709 = context_.luma_math == 2;
        const double kb = is_709 ? 0.3266 : 0.342;
        const double kr = is_709 ? 0.5453 : 0.6125;
        const double gain = context_.calibration_gain;
        const double across = b_minus_y_ * kb * context_.cb_gain * gain + context_.centre_x;
        const double down = context_.centre_y - r_minus_y_ * kr * context_.cr_gain * gain;
        if (std::isnan(across) || std::isnan(down)) return;
        const int x = truncated(across);
        const int y = truncated(down);
        const Rect &clip = context_.clip;
        if (x < clip.left || x > clip.right || y < clip.top || y > clip.bottom) return;
        if (context_.monochrome) {
            plot(kVectorscope, vectorscope_, x, y, context_.monochrome_colour);
            return;
        }
        const Colour colour = times(pixel, context_.vectorscope_gain * 0.2f);
        if (std::any_of(colour.begin(), colour.end(), [](float v) { return std::isnan(v); }))
            return;
        plot(kVectorscope, vectorscope_, x, y, colour);
    }

    void parade_sample(const Colour &pixel, int column) {
        const int dx = truncated(column * context_.parade_x_scale);
        if (!traces_.parade_over_range) traces_.parade_over_range = over_range_;
        if (context_.parade_mode == 4) {
            parade_plot(0, dx, luma_, 0.0);
            parade_plot(1, dx, b_minus_y_ * 0.5f, context_.parade_centre_offset);
            parade_plot(2, dx, r_minus_y_ * 0.6f, context_.parade_centre_offset);
        } else {
            parade_plot(0, dx, pixel[1], 0.0);
            parade_plot(1, dx, pixel[2], 0.0);
            parade_plot(2, dx, pixel[3], 0.0);
        }
    }

    // `lift` is the height of the column's zero above the bottom line, in pixels.
    void parade_plot(std::size_t k, int dx, float value, double lift) {
        const TraceArea &area = context_.parade;
        const double level = area.bottom - value * context_.value_scale * area.span - lift;
        if (std::isnan(level)) return;
        const int y = trace_row(level, context_.top, area.bottom);
        plot(kParade, parade_, context_.parade_anchors[k] + dx, y, context_.parade_colours[k]);
    }

    void histogram_sample(const Colour &pixel) {
        if (context_.histogram_mode == 2) {
            count(0, luma_);
        } else {
            count(0, pixel[1]);
            count(1, pixel[2]);
            count(2, pixel[3]);
        }
    }

    // Black and over-range values are deliberately not counted.
    void count(std::size_t channel, float value) {
        if (!(value > 0.0f && value <= 1.0f)) return;
        std::uint32_t &bin = traces_.bins[channel * 256 + static_cast<std::size_t>(value * 255.0f)];
        ++bin;
        if (bin > traces_.maxima[channel]) traces_.maxima[channel] = bin;
    }

    const Image &source_;
    const ScopeContext &context_;
    ScopeTraces &traces_;
    const PlotObserver &observer_;
    TypedPicture<D> waveform_;
    TypedPicture<D> vectorscope_;
    TypedPicture<D> parade_;
    float luma_ = 0.0f;
    float b_minus_y_ = 0.0f;
    float r_minus_y_ = 0.0f;
    bool over_range_ = false;
};

}  // namespace

void sample_picture(const Image &source, const ScopeContext &context, int parts,
                    ScopeTraces &traces, const PlotObserver &observer) {
    const bool sampled = context.show[kWaveform] || context.show[kVectorscope] ||
                         context.show[kParade] || context.show[kHistogram];
    if (sampled && !context.muted) {
        const int n = std::clamp(parts, 1, 64);
        const int rows = source.height / n;
        with_depth(source.depth, [&](auto depth) {
            for (int part = 0; part < n; ++part) {
                Worker<decltype(depth)::value>(source, context, traces, observer).run(part, rows);
            }
        });
    }
    for (std::uint32_t &maximum : traces.maxima) {
        if (maximum == 0) maximum = 1;
    }
}

}  // namespace ks::oracle
