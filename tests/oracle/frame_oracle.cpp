#include "oracle/frame_oracle.h"

#include <algorithm>
#include <optional>

#include "oracle/draw_oracle.h"
#include "oracle/pixel_oracle.h"

namespace ks::oracle {
namespace {

constexpr std::array<std::uint8_t, 4> kBackground{255, 30, 30, 30};
constexpr std::array<int, 5> kWalkOrder{kWaveform, kParade, kVectorscope, kSlice, kHistogram};
constexpr int kSplit = 3;
constexpr int kClassic = 4;
constexpr int kWindowed = 6;
constexpr int kOff = 7;

// A marker from (x0, y0) to (x1, y1), both ends drawn.
struct Segment {
    int x0, y0, x1, y1;
};

struct Markers {
    Segment wipe;
    Segment slice;
};

struct Tile {
    int view;
    Colour outline;
    int x, y;
};

double horizontal_scale(const FrameSettings &s) {
    const double par = static_cast<double>(s.par_num) / s.par_den;
    return (1.0 / s.downsample_x_den) / par;
}

double panel_aspect(const FrameSettings &s, int out_width, int out_height) {
    if (s.aspect == 2) return 0.5625;
    if (s.aspect == 3) return 0.75;
    if (s.aspect == 4) return 1.0;
    const double par = static_cast<double>(s.par_num) / s.par_den;
    const float ratio =
        static_cast<float>(s.downsample_x_den) / static_cast<float>(s.downsample_y_den);
    return out_height / (static_cast<double>(ratio) * out_width * par);
}

// 16.16 to whole pixels, rounding down.
int fixed_to_pixels(std::int32_t fixed) {
    return fixed >> 16;
}

bool any_scope(const FrameSettings &s) {
    return std::any_of(kWalkOrder.begin(), kWalkOrder.end(),
                       [&](int kind) { return s.show[static_cast<std::size_t>(kind)]; });
}

double wipe_fraction(const Image *original, const FrameSettings &s) {
    return original == nullptr ? 0.0 : s.compare * 0.01;
}

Image corrected_image(const Image &input, const FrameSettings &s) {
    const bool identity = s.view == 1 && s.gain == 1.0 && 1.0 / s.gamma == 1.0;
    if (identity) return input;
    return convert_view(input, s.view, s.gamma, s.gain, s.luma_math, 1);
}

void lay_original(Image &corrected, const Image &original, const FrameSettings &s) {
    const double opacity = s.compare_opacity * 0.01;
    const Rect rect{0, 0, whole(corrected.width * (s.compare * 0.01)), corrected.height};
    const int dx =
        original.width < corrected.width ? whole((corrected.width - original.width) * 0.5) : 0;
    const int dy =
        original.height < corrected.height ? whole((corrected.height - original.height) * 0.5) : 0;
    host_transfer_rect(original, rect, {whole(opacity * 255), whole(opacity * 32768)}, dx, dy,
                       corrected);
}

std::array<Tile, 3> tiles(const FrameSettings &s, int width, int height) {
    const bool split = s.layout == kSplit;
    const int h = whole(0.5 * width);
    const int v = whole(0.5 * height);
    const int q = whole(0.25 * width);
    const int r = whole(0.75 * height);
    const std::array<std::array<int, 2>, 3> corners =
        split ? std::array<std::array<int, 2>, 3>{{{h, 0}, {0, v}, {h, v}}}
              : std::array<std::array<int, 2>, 3>{{{q, r}, {2 * q, r}, {3 * q, r}}};
    const float a = 0.75f;
    std::array<Tile, 3> list =
        s.channels == 2
            ? std::array<Tile, 3>{{{3, {a, 1, 1, 1}, 0, 0},
                                   {7, {a, 1, 1, 0}, 0, 0},
                                   {8, {a, 0, 1, 1}, 0, 0}}}
            : std::array<Tile, 3>{
                  {{4, {a, 1, 0, 0}, 0, 0}, {5, {a, 0, 1, 0}, 0, 0}, {6, {a, 0, 0, 1}, 0, 0}}};
    for (std::size_t i = 0; i < 3; ++i) {
        list[i].x = corners[i][0];
        list[i].y = corners[i][1];
    }
    return list;
}

void draw_tile(Image &output, const Image &input, const Tile &tile, double t,
               const FrameSettings &s) {
    Image world = make_image(whole(input.width * t), whole(input.height * t), input.depth);
    const Rect all{0, 0, world.width, world.height};
    host_transform_world(input, s.quality, {1.0 / t, 1.0 / t, 0.0, 0.0}, all, world);
    world = convert_view(world, tile.view, s.gamma, s.gain, s.luma_math, 2);
    draw_outline(world, {0, 0, whole(t * output.width), whole(t * output.height)}, 2, tile.outline);
    host_transfer_rect(world, all, {}, tile.x, tile.y, output);
}

Markers single_layout(Image &output, const Image &corrected, double fraction,
                      const FrameSettings &s) {
    host_copy(corrected, output, s.quality);
    const int edge = whole(output.width * fraction);
    const int row = whole((output.height - 1) * (s.slice_position * 0.01));
    return {{edge, 0, edge, output.height}, {0, row, output.width, row}};
}

Markers four_way_layout(Image &output, const Image &input, const Image &corrected, double fraction,
                        const FrameSettings &s) {
    const double scale = s.layout == kSplit ? 0.5 : 0.75;
    const double x0 = s.layout == kSplit ? 0.0 : 0.25 * output.width;
    host_fill(output, kBackground, std::nullopt);
    host_transform_world(corrected, s.quality, {1.0 / scale, 1.0 / scale, -x0 / scale, 0.0},
                         {0, 0, output.width, output.height}, output);
    for (const Tile &tile : tiles(s, output.width, output.height)) {
        draw_tile(output, input, tile, s.layout == kSplit ? 0.5 : 0.25, s);
    }
    const int edge = whole(scale * output.width * fraction) + whole(x0);
    const int bottom = whole(scale * output.height);
    const int row = whole((output.height - 1) * scale * (s.slice_position * 0.01));
    return {{edge, bottom, edge, bottom},
            {whole(x0), row, whole(scale * output.width) + whole(x0), row}};
}

Markers windowed_layout(Image &output, const Image &corrected, double fraction,
                        const FrameSettings &s) {
    const int px = fixed_to_pixels(s.monitor_position.x);
    const int py = fixed_to_pixels(s.monitor_position.y);
    const double m = s.monitor_size * 0.01;
    host_fill(output, kBackground, std::nullopt);
    host_transform_world(corrected, s.quality, {1.0 / m, 1.0 / m, -px / m, -py / m},
                         {0, 0, output.width, output.height}, output);
    const int width = whole(output.width * m);
    const int height = whole(output.height * m);
    const int edge = whole(width * fraction) + px;
    const int row = whole(height * (s.slice_position * 0.01)) + py;
    return {{edge, py, edge, py + height}, {px, row, px + width, row}};
}

void draw_markers(Image &output, const Markers &markers, double fraction, const FrameSettings &s) {
    const Segment &w = markers.wipe;
    if (fraction > 0.0 && fraction < 1.0) {
        const auto opacity = static_cast<float>(s.compare_opacity * 0.01);
        draw_line(output, w.x0, w.y0, w.x1, w.y1, {opacity, opacity, opacity, opacity},
                  kPlotAdditive);
    }
    const Segment &l = markers.slice;
    if (s.show[kSlice]) {
        const double sx = horizontal_scale(s);
        draw_dashed_line(output, l.x0, l.y0, l.x1, l.y1, whole(4 * sx), whole(5 * sx),
                         {0.75f, 0.0f, 1.0f, 0.0f}, kPlotOver);
    }
}

// Places each listed panel once, the last entry of the order first.
void place_panels(Image &output, const FrameResult &frame, const FrameSettings &s) {
    for (int entry = frame.order.count - 1; entry >= 0; --entry) {
        const int kind = frame.order.kinds[static_cast<std::size_t>(entry)];
        const auto panel = std::find_if(frame.panels.begin(), frame.panels.end(),
                                        [&](const PanelSize &p) { return p.kind == kind; });
        if (panel == frame.panels.end()) continue;
        const auto k = static_cast<std::size_t>(kind);
        const Image empty = make_image(panel->width, panel->height, output.depth);
        const Image &picture = s.panel_pictures[k] != nullptr ? *s.panel_pictures[k] : empty;
        host_transfer_rect(picture, {0, 0, panel->width, panel->height}, {},
                           fixed_to_pixels(s.position[k].x), fixed_to_pixels(s.position[k].y),
                           output);
    }
}

Markers draw_layout(Image &output, const Image &input, const Image &corrected, double fraction,
                    const FrameSettings &s) {
    if (s.layout == kSplit || s.layout == kClassic) {
        return four_way_layout(output, input, corrected, fraction, s);
    }
    if (s.layout == kWindowed) return windowed_layout(output, corrected, fraction, s);
    return single_layout(output, corrected, fraction, s);
}

void measure(FrameResult &frame, Measured which, const Image &image) {
    frame.measured = which;
    frame.measured_image = image;
}

}  // namespace

std::vector<PanelSize> panel_sizes(const FrameSettings &s, int out_width, int out_height) {
    const double sx = horizontal_scale(s);
    const double aspect = panel_aspect(s, out_width, out_height);
    std::vector<PanelSize> list;
    for (const int kind : kWalkOrder) {
        const auto k = static_cast<std::size_t>(kind);
        if (!s.show[k]) continue;
        double width = s.size[k];
        double height = aspect * s.size[k] + 18.0;
        if (kind == kVectorscope) height = s.size[k] + 18.0;
        if (kind == kHistogram) {
            width = 272.0;
            height = s.size[k] + 18.0 + 24.0;
        }
        list.push_back({kind, whole(width * sx), whole(height / s.downsample_y_den)});
    }
    return list;
}

StackingOrder next_order(const StackingOrder &stored, const std::vector<PanelSize> &panels) {
    if (stored.count == static_cast<int>(panels.size())) return stored;
    StackingOrder order{{0, 0, 0, 0, 0}, static_cast<std::int8_t>(panels.size())};
    for (std::size_t i = 0; i < panels.size(); ++i) {
        order.kinds[i] = static_cast<std::int8_t>(panels[i].kind);
    }
    return order;
}

FrameResult render_frame_oracle(const Image &input, const Image *original, const FrameSettings &s) {
    FrameResult frame;
    frame.order = s.order;
    if (input.height < 75) {
        frame.output = input;
        return frame;
    }
    frame.output = make_image(input.width, input.height, input.depth);
    frame.panels = panel_sizes(s, input.width, input.height);
    if (any_scope(s) && (s.corrections == 2 || s.layout == kOff)) {
        measure(frame, Measured::kInput, input);
    }
    if (s.layout == kOff) {
        host_fill(frame.output, kBackground, std::nullopt);
    } else {
        Image corrected = corrected_image(input, s);
        if (any_scope(s) && s.corrections == 1) measure(frame, Measured::kCorrected, corrected);
        const double fraction = wipe_fraction(original, s);
        if (fraction > 0.0) lay_original(corrected, *original, s);
        const Markers markers = draw_layout(frame.output, input, corrected, fraction, s);
        draw_markers(frame.output, markers, fraction, s);
    }
    frame.order = next_order(s.order, frame.panels);
    place_panels(frame.output, frame, s);
    return frame;
}

}  // namespace ks::oracle
