#include "support/pictures/test_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <numbers>

#include "stage/image/codecs/picture_io.h"
#include "support/paths.h"

namespace ks::test_support {
namespace {

namespace fs = std::filesystem;
using stage::Picture;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

struct Made {
    const char *name;
    Picture (*make)();
};
constexpr std::array<Made, 4> kMade{
    {{"Photograph", [] { return stage::read_picture(photograph_file()); }},
     {"BrightRings", bright_rings},
     {"HalfValues", half_values},
     {"WideGamut", wide_gamut}}};

// Optional, in a folder beside the source tree.
struct Public {
    const char *name;
    const char *file;
};
#if defined(_WIN32)
constexpr std::array<Public, 3> kPublic{{{"StillLife_jpg", "StillLife.jpg"},
                                         {"Desk_jpg", "Desk.jpg"},
                                         {"MtTamWest_jpg", "MtTamWest.jpg"}}};
#else
constexpr std::array<Public, 5> kPublic{{{"StillLife_jpg", "StillLife.jpg"},
                                         {"MtTamWest_jpg", "MtTamWest.jpg"},
                                         {"BrightRingsNanInf_exr", "BrightRingsNanInf.exr"},
                                         {"AllHalfValues_exr", "AllHalfValues.exr"},
                                         {"WideColorGamut_exr", "WideColorGamut.exr"}}};
#endif

template <class Colour>
Picture painted(int width, int height, stage::SampleType native, Colour &&colour) {
    Picture picture = stage::make_picture(width, height, native);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            float *pixel = picture.at(x, y);
            pixel[0] = 1.0f;
            for (int channel = 0; channel < 3; ++channel) {
                pixel[channel + 1] = colour(x, y, channel);
            }
        }
    }
    return picture;
}

// A spot of one value in some of the channels.
struct Spot {
    int x, y, radius;
    std::array<bool, 3> channels;
    float value;
};
constexpr std::array<Spot, 6> kSpots{{{40, 40, 9, {true, true, true}, kNan},
                                      {80, 40, 9, {false, true, false}, kNan},
                                      {120, 40, 9, {true, true, true}, kInf},
                                      {160, 40, 9, {true, false, false}, kInf},
                                      {40, 110, 9, {true, true, true}, -kInf},
                                      {80, 110, 9, {false, false, true}, -kInf}}};

}  // namespace

std::string photograph_file() {
    return paths::source() + "/tests/support/pictures/photograph.png";
}

Picture bright_rings() {
    return painted(256, 168, stage::SampleType::Float, [](int x, int y, int channel) {
        for (const Spot &spot : kSpots) {
            if (spot.channels[static_cast<std::size_t>(channel)] &&
                std::hypot(x - spot.x, y - spot.y) < spot.radius) {
                return spot.value;
            }
        }
        const double from_centre = std::hypot(x - 128, y - 84);
        const double ring = 1.0 + 0.5 * std::sin(0.5 * from_centre + channel);
        return static_cast<float>(std::exp2(from_centre / 8.0 - 4.0) * ring);
    });
}

float from_half(std::uint16_t bits) {
    const int exponent = (bits >> 10) & 31;
    const int fraction = bits & 1023;
    float value = 0.0f;
    if (exponent == 31) {
        value = fraction == 0 ? kInf : kNan;
    } else if (exponent == 0) {
        value = std::ldexp(static_cast<float>(fraction), -24);
    } else {
        value = std::ldexp(static_cast<float>(1024 + fraction), exponent - 25);
    }
    return (bits & 0x8000) != 0 ? -value : value;
}

std::uint16_t half_bits(int x, int y, int channel) {
    constexpr std::array<int, 3> kTurn{0, 0xFFFF, 0x5A5A};
    const int index = (y * kHalfSide + x) ^ kTurn[static_cast<std::size_t>(channel)];
    return static_cast<std::uint16_t>(index);
}

Picture half_values() {
    return painted(kHalfSide, kHalfSide, stage::SampleType::Half,
                   [](int x, int y, int channel) { return from_half(half_bits(x, y, channel)); });
}

Picture wide_gamut() {
    return painted(180, 120, stage::SampleType::Float, [](int x, int y, int channel) {
        const double hue = 2.0 * std::numbers::pi * (x / 180.0 - channel / 3.0);
        return static_cast<float>(0.5 + 1.2 * (y / 119.0) * std::cos(hue));
    });
}

std::vector<std::string> picture_names() {
    std::vector<std::string> names;
    for (const Made &made : kMade) names.emplace_back(made.name);
    for (const Public &file : kPublic) names.emplace_back(file.name);
    return names;
}

std::optional<Picture> picture_named(std::string_view name) {
    for (const Made &made : kMade) {
        if (made.name == name) return made.make();
    }
    const auto found = std::find_if(kPublic.begin(), kPublic.end(),
                                    [&](const Public &listed) { return listed.name == name; });
    const fs::path file = fs::path(paths::source()) / ".." / "shared" / "images" / found->file;
    if (!fs::exists(file)) return std::nullopt;
    return stage::read_picture(file);
}

}  // namespace ks::test_support
