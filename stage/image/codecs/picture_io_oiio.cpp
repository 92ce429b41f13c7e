// Pictures by OpenImageIO, in the native build.
#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <type_traits>

#include "stage/image/codecs/packed_samples.h"
#include "stage/image/codecs/picture_backend.h"

namespace stage::backend {
namespace {

constexpr std::array<PictureFormat, 8> kFormats = {{
    {"png", "png", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::U16},
    {"tif", "tiff", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::Float},
    {"tiff", "tiff", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::Float},
    {"dpx", "dpx", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::U16},
    {"jpg", "jpeg", AlphaStorage::None, SampleType::U8, SampleType::U8, SampleType::U8},
    {"jpeg", "jpeg", AlphaStorage::None, SampleType::U8, SampleType::U8, SampleType::U8},
    {"exr", "openexr", AlphaStorage::Premultiplied, SampleType::Float, SampleType::Float,
     SampleType::Float},
    {"hdr", "hdr", AlphaStorage::None, SampleType::Float, SampleType::Float, SampleType::Float},
}};

// Throws `what` with the library's reason. Of several lines the first tells what went wrong and the
// others what went wrong because of it.
[[noreturn]] void fail(const std::string &what, const std::string &reason) {
    const std::string line = reason.substr(0, reason.find('\n'));
    throw PictureError(line.empty() ? what : what + ": " + line);
}

// Files are coded on the calling thread. The library's own threads would compete with rendering,
// and gained nothing measurable for OpenEXR and TIFF at 3840x2160.
void set_up_library() {
    static const bool done = OIIO::attribute("exr_threads", -1) && OIIO::attribute("threads", 1);
    if (!done) throw PictureError("OpenImageIO does not take its settings");
}

std::unique_ptr<OIIO::ImageInput> open_file(const std::filesystem::path &path) {
    set_up_library();
    OIIO::ImageSpec hints;
    hints.attribute("oiio:UnassociatedAlpha", 1);
    auto input = OIIO::ImageInput::open(path.string(), &hints);
    if (!input) fail("cannot be read", OIIO::geterror());
    return input;
}

int channel_named(const OIIO::ImageSpec &spec, std::string_view name) {
    const auto found = std::ranges::find(spec.channelnames, name);
    return found == spec.channelnames.end() ? -1
                                            : static_cast<int>(found - spec.channelnames.begin());
}

// Red, green and blue by name; a file without them is grey and its first channel counts.
ChannelOrder channel_order(const OIIO::ImageSpec &spec) {
    const ChannelOrder named = {spec.alpha_channel, channel_named(spec, "R"),
                                channel_named(spec, "G"), channel_named(spec, "B")};
    if (std::ranges::none_of(named.begin() + 1, named.end(), [](int c) { return c < 0; })) {
        return named;
    }
    const int grey = spec.alpha_channel == 0 && spec.nchannels > 1 ? 1 : 0;
    const int alpha = spec.alpha_channel == grey ? -1 : spec.alpha_channel;
    return {alpha, grey, grey, grey};
}

// DPX says nothing of alpha, and its reader hands out the file's colours; they are straight by
// custom.
bool always_straight(std::string_view format) {
    return format == "dpx";
}

template <typename Sample>
void read_samples(OIIO::ImageInput &input, OIIO::TypeDesc type, Picture &picture) {
    const OIIO::ImageSpec &spec = input.spec();
    const ChannelOrder order = channel_order(spec);
    const int channels = std::ranges::max(order) + 1;
    std::vector<Sample> samples(static_cast<std::size_t>(spec.width) *
                                static_cast<std::size_t>(spec.height) *
                                static_cast<std::size_t>(channels));
    // The TIFF reader notes a strip that is cut off and reports success all the same.
    const bool read = input.read_image(0, 0, 0, channels, type, samples.data());
    if (!read || input.has_error()) fail("cannot be read", input.geterror());
    unpack_samples(samples.data(), channels, order, spec.x - spec.full_x, spec.y - spec.full_y,
                   spec.width, spec.height, picture);
}

Picture read_first_part(OIIO::ImageInput &input) {
    const OIIO::ImageSpec &spec = input.spec();
    if (spec.depth > 1 || spec.deep) fail("cannot be read: it is not a flat picture", "");
    if (spec.width > kMaxPictureSide || spec.height > kMaxPictureSide) {
        make_picture(spec.width, spec.height, SampleType::Float);
    }
    Picture picture = make_picture(spec.full_width, spec.full_height, SampleType::Float);
    switch (spec.format.basetype) {
        case OIIO::TypeDesc::UINT8:
            picture.native = SampleType::U8;
            read_samples<std::uint8_t>(input, OIIO::TypeDesc::UINT8, picture);
            break;
        case OIIO::TypeDesc::UINT16:
            picture.native = SampleType::U16;
            read_samples<std::uint16_t>(input, OIIO::TypeDesc::UINT16, picture);
            break;
        default:
            if (spec.format.basetype == OIIO::TypeDesc::HALF) picture.native = SampleType::Half;
            read_samples<float>(input, OIIO::TypeDesc::FLOAT, picture);
    }
    if (spec.alpha_channel >= 0 && spec.get_int_attribute("oiio:UnassociatedAlpha") == 0 &&
        !always_straight(input.format_name())) {
        unpremultiply(picture);
    }
    const float aspect = spec.get_float_attribute("PixelAspectRatio", 1.0f);
    if (aspect > 0.0f && aspect < 100.0f) picture.pixel_aspect = aspect;
    return picture;
}

OIIO::TypeDesc library_type(SampleType type) {
    switch (type) {
        case SampleType::U8:
            return OIIO::TypeDesc::UINT8;
        case SampleType::U16:
            return OIIO::TypeDesc::UINT16;
        default:
            return OIIO::TypeDesc::FLOAT;
    }
}

OIIO::ImageSpec output_spec(const Picture &picture, const PictureFormat &format,
                            SampleType stored) {
    const int channels = format.alpha == AlphaStorage::None ? 3 : 4;
    OIIO::ImageSpec spec(picture.width, picture.height, channels, library_type(stored));
    if (format.alpha == AlphaStorage::Straight) spec.attribute("oiio:UnassociatedAlpha", 1);
    if (picture.pixel_aspect != 1.0) {
        spec.attribute("PixelAspectRatio", static_cast<float>(picture.pixel_aspect));
    }
    if (format.library_name == "jpeg") {
        spec.attribute("Compression", "jpeg:95");
        spec.attribute("jpeg:subsampling", "4:4:4");
    }
    return spec;
}

template <typename Sample>
bool write_samples(OIIO::ImageOutput &output, const Picture &picture) {
    const OIIO::ImageSpec &spec = output.spec();
    auto samples = packed_samples<Sample>(picture, spec.nchannels);
    if constexpr (std::is_floating_point_v<Sample>) {
        if (std::string_view(output.format_name()) == "hdr") limit_to_rgbe(samples);
    }
    return output.write_image(OIIO::BaseTypeFromC<Sample>::value, samples.data());
}

bool write_stored(OIIO::ImageOutput &output, const Picture &picture, SampleType stored) {
    switch (stored) {
        case SampleType::U8:
            return write_samples<std::uint8_t>(output, picture);
        case SampleType::U16:
            return write_samples<std::uint16_t>(output, picture);
        default:
            return write_samples<float>(output, picture);
    }
}

}  // namespace

std::span<const PictureFormat> formats() {
    return kFormats;
}

Picture read(const std::filesystem::path &path) {
    return read_first_part(*open_file(path));
}

std::string encode(const Picture &picture, const PictureFormat &format, SampleType stored) {
    set_up_library();
    const std::string name(format.library_name);
    auto output = OIIO::ImageOutput::create(name);
    if (!output) fail("cannot be encoded", OIIO::geterror());
    // Into memory, since not every writer of the library notices that a device is full.
    std::vector<unsigned char> bytes;
    OIIO::Filesystem::IOVecOutput memory(bytes);
    if (!output->set_ioproxy(&memory) ||
        !output->open("memory." + name, output_spec(picture, format, stored))) {
        fail("cannot be encoded", output->geterror());
    }
    const bool written = write_stored(*output, picture, stored);
    const bool closed = output->close();
    if (!written || !closed) fail("cannot be encoded", output->geterror());
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

}  // namespace stage::backend
