// What the charts are painted with. Positions across a chart are pixels from its left edge.
#pragma once

#include <array>

#include "stage/image/picture.h"

namespace stage {

struct Rgb {
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
};

inline Rgb grey_of(float value) {
    return {value, value, value};
}

// Fills a picture with the colour that `f` gives for each pixel, f(x, y).
template <typename F>
Picture paint(int width, int height, F f) {
    Picture picture = make_picture(width, height, SampleType::Float);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Rgb colour = f(x, y);
            float *pixel = picture.at(x, y);
            pixel[0] = 1.0f;
            pixel[1] = colour.red;
            pixel[2] = colour.green;
            pixel[3] = colour.blue;
        }
    }
    return picture;
}

// Which of `count` equal parts of 0..length-1 holds `at`.
inline int part_of(int at, int length, int count) {
    return static_cast<int>(static_cast<long long>(at) * count / length);
}

// From 0 at the first pixel to 1 at the last; 0 when there is only one.
inline float ramp_at(int at, int length) {
    return length > 1 ? static_cast<float>(at) / static_cast<float>(length - 1) : 0.0f;
}

// White, yellow, cyan, green, magenta, red, blue, black at `level`.
Rgb bar_at(int x, int width, float level);

// Eleven steps from 0 to 1.
Rgb grey_step_at(int x, int width);

// A ramp of red (row 0), green, blue or grey (row 3).
Rgb channel_ramp_at(int row, int x, int width);

inline constexpr int kSkinTones = 12;

// Skin tones from light (0) to dark (kSkinTones - 1).
Rgb skin_tone(int index);

// A circular zone plate: rings that reach the finest possible pattern at half the greater side from
// the centre (x and y are measured from it, in pixels).
Rgb zone_plate_at(double x, double y, double half_side);

// The default chart (test_card.cpp).
Picture draw_test_card(int width, int height);

}  // namespace stage
