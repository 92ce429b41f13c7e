// The composite card: something for every scope to show.
#include <algorithm>
#include <array>
#include <cmath>

#include "stage/image/charts/chart_colours.h"

namespace stage {
namespace {

struct Card {
    int width;
    int height;
};

// A place inside a band: x across the card, y and height within the band, all in pixels.
struct Place {
    int x;
    int y;
    int height;
};

// Full saturation, hue from 0 (red) to 1 (red again).
Rgb hue_colour(float hue) {
    const auto channel = [&](float offset) {
        const float at = std::fmod(hue * 6.0f + offset, 6.0f);
        return std::clamp(std::abs(at - 3.0f) - 1.0f, 0.0f, 1.0f);
    };
    return {channel(0.0f), channel(4.0f), channel(2.0f)};
}

Rgb bars75_band(const Card &card, const Place &place) {
    return bar_at(place.x, card.width, 0.75f);
}

// The other way round, so that every colour lies under another one.
Rgb bars100_band(const Card &card, const Place &place) {
    return bar_at(card.width - 1 - place.x, card.width, 1.0f);
}

Rgb ramps_band(const Card &card, const Place &place) {
    return channel_ramp_at(part_of(place.y, place.height, 4), place.x, card.width);
}

Rgb steps_band(const Card &card, const Place &place) {
    return grey_step_at(place.x, card.width);
}

Rgb skin_band(const Card &card, const Place &place) {
    return skin_tone(part_of(place.x, card.width, kSkinTones));
}

// Vertical lines of 1, 2, 3, 4 and 6 pixels above horizontal ones.
Rgb grating(const Card &card, const Place &place) {
    constexpr std::array<int, 5> kLineWidths = {1, 2, 3, 4, 6};
    const int burst = std::min(part_of(place.x, std::max(card.width / 3, 1), 5), 4);
    const int line = kLineWidths[static_cast<std::size_t>(burst)];
    const int at = place.y < place.height / 2 ? place.x : place.y;
    return grey_of(at / line % 2 == 0 ? 0.9f : 0.1f);
}

// Gratings, a zone plate and a sweep of hues, a third of the width each.
Rgb detail_band(const Card &card, const Place &place) {
    const int third = part_of(place.x, card.width, 3);
    if (third == 0) return grating(card, place);
    if (third == 1) {
        return zone_plate_at(place.x + 0.5 - card.width / 2.0, place.y + 0.5 - place.height / 2.0,
                             std::max(card.width / 6.0, 1.0));
    }
    const int left = card.width - card.width / 3;
    return hue_colour(std::max(ramp_at(place.x - left, card.width - left), 0.0f));
}

struct Band {
    double bottom;  // fraction of the card's height
    Rgb (*colour)(const Card &, const Place &);
};

constexpr std::array<Band, 6> kBands = {{{0.36, bars75_band},
                                         {0.42, bars100_band},
                                         {0.58, ramps_band},
                                         {0.68, steps_band},
                                         {0.84, skin_band},
                                         {1.00, detail_band}}};

Rgb band_colour(const Card &card, int x, int y) {
    int top = 0;
    for (const Band &band : kBands) {
        const int bottom = static_cast<int>(std::lround(band.bottom * card.height));
        if (y < bottom) return band.colour(card, {x, y - top, bottom - top});
        top = bottom;
    }
    return {};
}

Rgb mixed(const Rgb &below, const Rgb &above, float coverage) {
    return {std::lerp(below.red, above.red, coverage),
            std::lerp(below.green, above.green, coverage),
            std::lerp(below.blue, above.blue, coverage)};
}

// How much of a pixel a line of `thickness` covers whose middle is `distance` away, in pixels.
float line_coverage(double distance, double thickness) {
    return static_cast<float>(std::clamp(thickness / 2 + 0.5 - std::abs(distance), 0.0, 1.0));
}

// A white circle with a dark outline, which stays visible on every band.
Rgb with_circle(const Card &card, int x, int y, const Rgb &below) {
    const double line = std::max(card.height / 360.0, 1.0);
    const double radius = 0.46 * card.height;
    const double distance =
        std::hypot(x + 0.5 - card.width / 2.0, y + 0.5 - card.height / 2.0) - radius;
    const Rgb outlined = mixed(below, grey_of(0.02f), line_coverage(distance, 2 * line));
    return mixed(outlined, grey_of(0.95f), line_coverage(distance, line));
}

}  // namespace

Picture draw_test_card(int width, int height) {
    const Card card = {width, height};
    return paint(width, height,
                 [&](int x, int y) { return with_circle(card, x, y, band_colour(card, x, y)); });
}

}  // namespace stage
