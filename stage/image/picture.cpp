#include "stage/image/picture.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>

#include "stage/image/sample_codes.h"

namespace stage {
namespace {

std::size_t sample_count(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
}

void check_sides(int width, int height) {
    if (width < 1 || height < 1 || width > kMaxPictureSide || height > kMaxPictureSide) {
        throw PictureError(
            fmt::format("a picture of {}x{} is not possible: each side must be 1 to {} pixels",
                        width, height, kMaxPictureSide));
    }
}

template <typename Code>
void codes_to_rows(const Picture &picture, int white, void *base, std::ptrdiff_t rowbytes) {
    const std::size_t row_samples = sample_count(picture.width, 1);
    for (int y = 0; y < picture.height; ++y) {
        const float *from = picture.at(0, y);
        auto *to = reinterpret_cast<Code *>(static_cast<std::byte *>(base) + y * rowbytes);
        for (std::size_t i = 0; i < row_samples; ++i) {
            to[i] = static_cast<Code>(code_of(from[i], white));
        }
    }
}

template <typename Code>
void rows_to_values(const void *base, std::ptrdiff_t rowbytes, int white, Picture &picture) {
    const std::size_t row_samples = sample_count(picture.width, 1);
    for (int y = 0; y < picture.height; ++y) {
        const auto *from =
            reinterpret_cast<const Code *>(static_cast<const std::byte *>(base) + y * rowbytes);
        float *to = picture.at(0, y);
        for (std::size_t i = 0; i < row_samples; ++i) to[i] = value_of(from[i], white);
    }
}

void rows_to_floats(const void *base, std::ptrdiff_t rowbytes, Picture &picture) {
    const std::size_t row_size = sample_count(picture.width, 1) * sizeof(float);
    for (int y = 0; y < picture.height; ++y) {
        std::memcpy(picture.at(0, y), static_cast<const std::byte *>(base) + y * rowbytes,
                    row_size);
    }
}

// Applies `f` to the three colours of every pixel whose alpha is neither 0 nor 1.
template <typename F>
void scale_colours(Picture &picture, F f) {
    for (std::size_t i = 0; i + 3 < picture.argb.size(); i += 4) {
        const float alpha = picture.argb[i];
        if (alpha == 0.0f || alpha == 1.0f) continue;
        for (std::size_t c = 1; c < 4; ++c) picture.argb[i + c] = f(picture.argb[i + c], alpha);
    }
}

}  // namespace

Picture make_picture(int width, int height, SampleType native) {
    check_sides(width, height);
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.native = native;
    picture.argb.resize(sample_count(width, height));
    return picture;
}

void check_picture(const Picture &picture) {
    check_sides(picture.width, picture.height);
    if (picture.argb.size() != sample_count(picture.width, picture.height)) {
        throw PictureError(fmt::format(
            "a picture of {}x{} needs {} samples and has {}", picture.width, picture.height,
            sample_count(picture.width, picture.height), picture.argb.size()));
    }
}

void to_rows8(const Picture &picture, void *base, std::ptrdiff_t rowbytes) {
    codes_to_rows<std::uint8_t>(picture, kWhite8, base, rowbytes);
}

void to_rows16(const Picture &picture, void *base, std::ptrdiff_t rowbytes) {
    codes_to_rows<std::uint16_t>(picture, kWhite16, base, rowbytes);
}

void to_rowsf(const Picture &picture, void *base, std::ptrdiff_t rowbytes) {
    const std::size_t row_size = sample_count(picture.width, 1) * sizeof(float);
    for (int y = 0; y < picture.height; ++y) {
        std::memcpy(static_cast<std::byte *>(base) + y * rowbytes, picture.at(0, y), row_size);
    }
}

void to_rows(const Picture &picture, Depth depth, void *base, std::ptrdiff_t rowbytes) {
    switch (depth) {
        case Depth::U8:
            return to_rows8(picture, base, rowbytes);
        case Depth::U16:
            return to_rows16(picture, base, rowbytes);
        case Depth::Float:
            return to_rowsf(picture, base, rowbytes);
    }
}

Picture from_rows(Depth depth, const void *base, std::ptrdiff_t rowbytes, int width, int height) {
    Picture picture = make_picture(width, height, SampleType::Float);
    switch (depth) {
        case Depth::U8:
            picture.native = SampleType::U8;
            rows_to_values<std::uint8_t>(base, rowbytes, kWhite8, picture);
            break;
        case Depth::U16:
            picture.native = SampleType::HostU16;
            rows_to_values<std::uint16_t>(base, rowbytes, kWhite16, picture);
            break;
        case Depth::Float:
            rows_to_floats(base, rowbytes, picture);
            break;
    }
    return picture;
}

void premultiply(Picture &picture) {
    scale_colours(picture, [](float colour, float alpha) { return colour * alpha; });
}

void unpremultiply(Picture &picture) {
    scale_colours(picture, [](float colour, float alpha) { return colour / alpha; });
}

Depth depth_from_bits(int bits) {
    switch (bits) {
        case 8:
            return Depth::U8;
        case 16:
            return Depth::U16;
        case 32:
            return Depth::Float;
        default:
            throw PictureError("a depth of " + std::to_string(bits) +
                               " bits per channel is not possible: choose 8, 16 or 32");
    }
}

}  // namespace stage
