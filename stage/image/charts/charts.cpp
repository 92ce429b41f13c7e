#include "stage/image/charts/charts.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "stage/image/charts/chart_colours.h"

namespace stage {
namespace {

constexpr float kOverRangeLow = -0.25f;
constexpr float kOverRangeHigh = 2.0f;
constexpr float kSurround = 0.46f;  // neutral around the skin patches

// R'G'B' codes of 8 bits on the line that skin of every complexion keeps to in a vectorscope.
constexpr std::array<std::array<int, 3>, kSkinTones> kSkinCodes = {{{247, 226, 209},
                                                                    {241, 211, 188},
                                                                    {233, 194, 166},
                                                                    {222, 176, 146},
                                                                    {207, 156, 124},
                                                                    {190, 137, 105},
                                                                    {170, 118, 86},
                                                                    {148, 99, 70},
                                                                    {124, 80, 55},
                                                                    {101, 64, 43},
                                                                    {78, 49, 34},
                                                                    {56, 36, 27}}};

Picture draw_bars(int width, int height, float level) {
    return paint(width, height, [&](int x, int) { return bar_at(x, width, level); });
}

Picture draw_bars75(int width, int height) {
    return draw_bars(width, height, 0.75f);
}
Picture draw_bars100(int width, int height) {
    return draw_bars(width, height, 1.0f);
}

Picture draw_ramp(int width, int height) {
    return paint(width, height, [&](int x, int) { return grey_of(ramp_at(x, width)); });
}

Picture draw_ramps(int width, int height) {
    return paint(width, height,
                 [&](int x, int y) { return channel_ramp_at(part_of(y, height, 4), x, width); });
}

Picture draw_grey_steps(int width, int height) {
    return paint(width, height, [&](int x, int) { return grey_step_at(x, width); });
}

// Two rows of patches; the surround takes a tenth of each cell on every side.
Picture draw_skin(int width, int height) {
    constexpr int kRows = 2;
    constexpr int kColumns = kSkinTones / kRows;
    return paint(width, height, [&](int x, int y) {
        const double column = (x + 0.5) * kColumns / width;
        const double row = (y + 0.5) * kRows / height;
        const auto inside = [](double at) {
            return at - std::floor(at) >= 0.1 && at - std::floor(at) < 0.9;
        };
        if (!inside(column) || !inside(row)) return grey_of(kSurround);
        return skin_tone(static_cast<int>(row) * kColumns + static_cast<int>(column));
    });
}

Picture draw_over_range(int width, int height) {
    return paint(width, height, [&](int x, int) {
        return grey_of(std::lerp(kOverRangeLow, kOverRangeHigh, ramp_at(x, width)));
    });
}

Picture draw_zone(int width, int height) {
    const double half_side = std::max(width, height) / 2.0;
    return paint(width, height, [&](int x, int y) {
        return zone_plate_at(x + 0.5 - width / 2.0, y + 0.5 - height / 2.0, half_side);
    });
}

constexpr std::array<Chart, 9> kCharts = {{
    {"test-card", "bars, ramps, steps, skin tones, gratings and a circle in one card",
     draw_test_card},
    {"bars75", "eight colour bars, white to black, at 75 %", draw_bars75},
    {"bars100", "eight colour bars, white to black, at 100 %", draw_bars100},
    {"ramp", "grey from black at the left to white at the right", draw_ramp},
    {"ramps", "ramps of red, green, blue and grey, one below the other", draw_ramps},
    {"grey-steps", "eleven steps of grey from 0 % to 100 %", draw_grey_steps},
    {"skin", "twelve skin tones from light to dark on neutral grey", draw_skin},
    {"over-range", "grey ramp from -0.25 to 2.0; clipped at 8 and 16 bits", draw_over_range},
    {"zone", "circular zone plate, the finest detail at the edges", draw_zone},
}};

}  // namespace

Rgb bar_at(int x, int width, float level) {
    // Blue alternates fastest, then red, then green, each starting lit.
    const int bar = part_of(x, width, 8);
    const auto lit = [&](int bit) { return (bar & bit) == 0 ? level : 0.0f; };
    return {lit(2), lit(4), lit(1)};
}

Rgb grey_step_at(int x, int width) {
    return grey_of(static_cast<float>(part_of(x, width, 11)) / 10.0f);
}

Rgb channel_ramp_at(int row, int x, int width) {
    const float value = ramp_at(x, width);
    switch (row) {
        case 0:
            return {value, 0.0f, 0.0f};
        case 1:
            return {0.0f, value, 0.0f};
        case 2:
            return {0.0f, 0.0f, value};
        default:
            return grey_of(value);
    }
}

Rgb skin_tone(int index) {
    const auto &codes = kSkinCodes[static_cast<std::size_t>(index)];
    return {static_cast<float>(codes[0]) / 255.0f, static_cast<float>(codes[1]) / 255.0f,
            static_cast<float>(codes[2]) / 255.0f};
}

Rgb zone_plate_at(double x, double y, double half_side) {
    // The phase pi r^2 / (2 R) grows by pi per pixel at r = R: one cycle in two pixels.
    const double phase = std::numbers::pi * (x * x + y * y) / (2.0 * half_side);
    return grey_of(static_cast<float>(0.5 + 0.5 * std::cos(phase)));
}

std::span<const Chart> charts() {
    return kCharts;
}

Picture draw_chart(std::string_view name, int width, int height) {
    const auto chart = std::ranges::find(kCharts, name, &Chart::name);
    if (chart != kCharts.end()) return chart->draw(width, height);
    std::string names;
    for (const Chart &known : kCharts)
        names += (names.empty() ? "" : ", ") + std::string(known.name);
    throw PictureError("there is no chart \"" + std::string(name) + "\": choose one of " + names);
}

}  // namespace stage
