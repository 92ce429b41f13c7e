// Samples in the order of picture libraries: red, green, blue and alpha, without padding.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "stage/image/picture.h"
#include "stage/image/sample_codes.h"

namespace stage {

// The picture as rows of `channels` samples per pixel, 3 (alpha is dropped) or 4. Integer types get
// codes up to the largest value of the type.
template <typename Sample>
std::vector<Sample> packed_samples(const Picture &picture, int channels) {
    constexpr std::array<std::size_t, 4> kRgbaOfArgb = {1, 2, 3, 0};
    std::vector<Sample> samples;
    samples.reserve(picture.argb.size() / 4 * static_cast<std::size_t>(channels));
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        for (std::size_t c = 0; c < static_cast<std::size_t>(channels); ++c) {
            const float value = picture.argb[i + kRgbaOfArgb[c]];
            if constexpr (std::is_floating_point_v<Sample>) {
                samples.push_back(value);
            } else {
                samples.push_back(static_cast<Sample>(code_of(value, static_cast<Sample>(-1))));
            }
        }
    }
    return samples;
}

// Radiance files share one exponent among three colours: they hold neither negative values nor any
// that are not finite. Those become 0, and infinity and huge values 1e38.
inline void limit_to_rgbe(std::vector<float> &samples) {
    for (float &sample : samples) sample = sample > 0.0f ? std::min(sample, 1e38f) : 0.0f;
}

// Where a picture's alpha, red, green and blue are found among the channels of a file; -1 for an
// alpha that the file does not have, which reads as 1.
using ChannelOrder = std::array<int, 4>;

// Fills the part of `picture` from `left`, `top` on with rows of packed samples that start at
// `from`, `width` x `height` pixels of `channels` samples. What lies outside the picture is left
// out. Integer codes are divided by the largest value of their type.
template <typename Sample>
void unpack_samples(const Sample *from, int channels, const ChannelOrder &order, int left, int top,
                    int width, int height, Picture &picture) {
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x, from += channels) {
            if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) continue;
            float *to = picture.at(x, y);
            for (std::size_t c = 0; c < 4; ++c) {
                if (order[c] < 0) {
                    to[c] = 1.0f;
                } else if constexpr (std::is_floating_point_v<Sample>) {
                    to[c] = from[order[c]];
                } else {
                    to[c] = value_of(from[order[c]], static_cast<Sample>(-1));
                }
            }
        }
    }
}

}  // namespace stage
