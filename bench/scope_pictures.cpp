#include "scope_pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <random>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"

namespace ks_bench {
namespace {

namespace fs = std::filesystem;

fs::path photograph() {
    return fs::path(KS_SOURCE_DIR) / ".." / "shared" / "images" / "StillLife.jpg";
}

/// Uniform from -0.5 to 0.5, the same for every run.
class Dither {
  public:
    float operator()() {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<float>(state_ >> 8) / 16777216.0f - 0.5f;
    }

  private:
    std::uint32_t state_ = 1;
};

/// Fills the colours by `value(x, y, channel)` with channel 1..3, alpha by 1.
template <class Value>
stage::Picture fill(int width, int height, Value &&value) {
    stage::Picture picture = stage::make_picture(width, height, stage::SampleType::Float);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            float *const pixel = picture.at(x, y);
            pixel[0] = 1.0f;
            for (int k = 1; k < 4; ++k) pixel[k] = value(x, y, k);
        }
    }
    return picture;
}

stage::Picture noise(int width, int height) {
    std::mt19937 random(20240611);  // NOLINT: the same picture in every run
    return fill(width, height, [&random](int, int, int) {
        return static_cast<float>(random() >> 8) / 16777215.0f;
    });
}

float mix(float a, float b, float t) {
    return a + (b - a) * t;
}

stage::Picture scaled_photograph(int width, int height) {
    const stage::Picture photo = stage::read_picture(photograph());
    Dither dither;
    return fill(width, height, [&](int x, int y, int k) {
        const float fx =
            static_cast<float>(x) * static_cast<float>(photo.width - 1) / static_cast<float>(width);
        const float fy = static_cast<float>(y) * static_cast<float>(photo.height - 1) /
                         static_cast<float>(height);
        const int ix = static_cast<int>(fx);
        const int iy = static_cast<int>(fy);
        const float ax = fx - static_cast<float>(ix);
        const float top = mix(photo.at(ix, iy)[k], photo.at(ix + 1, iy)[k], ax);
        const float bottom = mix(photo.at(ix, iy + 1)[k], photo.at(ix + 1, iy + 1)[k], ax);
        const float value = mix(top, bottom, fy - static_cast<float>(iy));
        return std::clamp(value + dither() / 255.0f, 0.0f, 1.0f);
    });
}

/// Slow waves of different tint with finer ones on them.
stage::Picture synthetic(int width, int height) {
    Dither dither;
    return fill(width, height, [&](int x, int y, int k) {
        const float u = static_cast<float>(x) / static_cast<float>(width);
        const float v = static_cast<float>(y) / static_cast<float>(height);
        const float tint = static_cast<float>(k) * 0.35f;
        const float slow = std::sin(5.0f * u + tint) * std::cos(4.0f * v - tint);
        const float fine = std::sin(61.0f * u + 9.0f * v) * std::sin(47.0f * v);
        const float value = 0.42f + 0.3f * slow + 0.06f * fine;
        return std::clamp(value + dither() / 255.0f, 0.0f, 1.0f);
    });
}

stage::Picture make(const std::string &name, int width, int height) {
    if (name == "bars") return stage::draw_chart("bars75", width, height);
    if (name == "noise") return noise(width, height);
    if (name != "natural") throw stage::PictureError("no such benchmark picture: " + name);
    return fs::exists(photograph()) ? scaled_photograph(width, height) : synthetic(width, height);
}

}  // namespace

const stage::Picture &scope_picture(const std::string &name, int width, int height) {
    static std::string kept_name;
    static stage::Picture kept;
    if (kept_name != name || kept.width != width || kept.height != height) {
        kept = make(name, width, height);
        kept_name = name;
    }
    return kept;
}

std::string natural_source() {
    return fs::exists(photograph()) ? photograph().filename().string() : "synthetic";
}

}  // namespace ks_bench
