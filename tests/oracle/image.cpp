#include "oracle/image.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ks::oracle {

Image make_image(int width, int height, Depth depth) {
    Image image;
    image.width = std::max(width, 0);
    image.height = std::max(height, 0);
    image.depth = depth;
    const std::size_t count =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4;
    if (depth == Depth::kByte) image.bytes8.assign(count, 0);
    if (depth == Depth::kWord) image.words16.assign(count, 0);
    if (depth == Depth::kFloat) image.floats.assign(count, 0.0f);
    return image;
}

double full_scale(Depth depth) {
    if (depth == Depth::kByte) return 255.0;
    if (depth == Depth::kWord) return 32768.0;
    return 1.0;
}

bool contains(const Image &image, int x, int y) {
    return x >= 0 && y >= 0 && x < image.width && y < image.height;
}

std::size_t component_index(const Image &image, int x, int y) {
    const auto width = static_cast<std::size_t>(image.width);
    return (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x)) * 4;
}

Stored stored_pixel(const Image &image, int x, int y) {
    const std::size_t at = component_index(image, x, y);
    Stored value{};
    for (std::size_t c = 0; c < 4; ++c) {
        if (image.depth == Depth::kByte) value[c] = image.bytes8[at + c];
        if (image.depth == Depth::kWord) value[c] = image.words16[at + c];
        if (image.depth == Depth::kFloat) value[c] = image.floats[at + c];
    }
    return value;
}

void store_pixel(Image &image, int x, int y, const Stored &value) {
    const std::size_t at = component_index(image, x, y);
    for (std::size_t c = 0; c < 4; ++c) {
        if (image.depth == Depth::kByte)
            image.bytes8[at + c] = static_cast<std::uint8_t>(whole(value[c]));
        if (image.depth == Depth::kWord)
            image.words16[at + c] = static_cast<std::uint16_t>(whole(value[c]));
        if (image.depth == Depth::kFloat) image.floats[at + c] = static_cast<float>(value[c]);
    }
}

int whole(double value) {
    if (std::isnan(value)) return 0;
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

}  // namespace ks::oracle
