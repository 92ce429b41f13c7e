// Pictures by stb, in the Windows build.
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include <array>
#include <climits>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "stage/image/codecs/packed_samples.h"
#include "stage/image/codecs/picture_backend.h"
#include "stage/image/codecs/png16.h"

namespace stage::backend {
namespace {

constexpr std::array<PictureFormat, 4> kFormats = {{
    {"png", "png", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::U16},
    {"jpg", "jpeg", AlphaStorage::None, SampleType::U8, SampleType::U8, SampleType::U8},
    {"jpeg", "jpeg", AlphaStorage::None, SampleType::U8, SampleType::U8, SampleType::U8},
    {"hdr", "hdr", AlphaStorage::None, SampleType::Float, SampleType::Float, SampleType::Float},
}};

constexpr int kJpegQuality = 95;

// Alpha, red, green and blue among 1 to 4 channels: grey, grey and alpha, RGB, RGBA.
constexpr std::array<ChannelOrder, 5> kOrders = {
    {{}, {-1, 0, 0, 0}, {1, 0, 0, 0}, {-1, 0, 1, 2}, {3, 0, 1, 2}}};

std::string read_bytes(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in) throw PictureError("cannot be read");
    if (bytes.size() > INT_MAX) throw PictureError("cannot be read: the file is larger than 2 GB");
    return bytes;
}

// Decodes with one of stb's loaders, all of which take the same arguments.
template <typename Sample>
Picture decode(const std::string &bytes, SampleType native,
               Sample *(*load)(const stbi_uc *, int, int *, int *, int *, int)) {
    int width = 0;
    int height = 0;
    int channels = 0;
    const std::unique_ptr<Sample, decltype(&stbi_image_free)> samples(
        load(reinterpret_cast<const stbi_uc *>(bytes.data()), static_cast<int>(bytes.size()),
             &width, &height, &channels, 0),
        &stbi_image_free);
    if (!samples) throw PictureError(std::string("cannot be read: ") + stbi_failure_reason());
    Picture picture = make_picture(width, height, native);
    unpack_samples(samples.get(), channels, kOrders[static_cast<std::size_t>(channels)], 0, 0,
                   width, height, picture);
    return picture;
}

void append_bytes(void *out, void *data, int size) {
    static_cast<std::string *>(out)->append(static_cast<const char *>(data),
                                            static_cast<std::size_t>(size));
}

std::string encode8(const Picture &picture, const PictureFormat &format) {
    std::string bytes;
    const bool png = format.library_name == "png";
    const int channels = png ? 4 : 3;
    const auto samples = packed_samples<std::uint8_t>(picture, channels);
    if (samples.size() > INT_MAX) throw PictureError("the picture is too large for the format");
    const int done =
        png ? stbi_write_png_to_func(append_bytes, &bytes, picture.width, picture.height, channels,
                                     samples.data(), picture.width * channels)
            : stbi_write_jpg_to_func(append_bytes, &bytes, picture.width, picture.height, channels,
                                     samples.data(), kJpegQuality);
    if (done == 0) throw PictureError("the picture cannot be encoded");
    return bytes;
}

std::string encode_hdr(const Picture &picture) {
    std::string bytes;
    auto samples = packed_samples<float>(picture, 3);
    limit_to_rgbe(samples);
    if (stbi_write_hdr_to_func(append_bytes, &bytes, picture.width, picture.height, 3,
                               samples.data()) == 0) {
        throw PictureError("the picture cannot be encoded");
    }
    return bytes;
}

}  // namespace

std::span<const PictureFormat> formats() {
    return kFormats;
}

Picture read(const std::filesystem::path &path) {
    const std::string bytes = read_bytes(path);
    const auto *data = reinterpret_cast<const stbi_uc *>(bytes.data());
    const int size = static_cast<int>(bytes.size());
    if (stbi_is_hdr_from_memory(data, size) != 0) {
        return decode<float>(bytes, SampleType::Float, stbi_loadf_from_memory);
    }
    if (stbi_is_16_bit_from_memory(data, size) != 0) {
        return decode<stbi_us>(bytes, SampleType::U16, stbi_load_16_from_memory);
    }
    return decode<stbi_uc>(bytes, SampleType::U8, stbi_load_from_memory);
}

std::unique_ptr<PictureSource> open_video(const std::filesystem::path &) {
    return nullptr;
}

std::string encode(const Picture &picture, const PictureFormat &format, SampleType stored) {
    switch (stored) {
        case SampleType::U8:
            return encode8(picture, format);
        case SampleType::U16:
            return encode_png16(picture);
        default:
            return encode_hdr(picture);
    }
}

}  // namespace stage::backend
