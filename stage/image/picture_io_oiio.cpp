// Pictures by OpenImageIO, in the native build.
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <type_traits>

#include "stage/image/packed_samples.h"
#include "stage/image/picture_backend.h"

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

// An error of the library as one line.
[[noreturn]] void fail(const std::string &what, std::string reason) {
    while (!reason.empty() && (reason.back() == '\n' || reason.back() == ' ')) reason.pop_back();
    for (std::size_t at; (at = reason.find('\n')) != std::string::npos;) reason.replace(at, 1, "; ");
    throw PictureError(reason.empty() ? what : what + ": " + reason);
}

std::unique_ptr<OIIO::ImageInput> open_file(const std::filesystem::path &path) {
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

// Formats whose readers hand out the file's colours whatever alpha is; they are straight by custom.
bool always_straight(std::string_view format) { return format == "dpx" || format == "ffmpeg"; }

template <typename Sample>
void read_samples(OIIO::ImageInput &input, int subimage, OIIO::TypeDesc type, Picture &picture) {
    const OIIO::ImageSpec &spec = input.spec();
    const ChannelOrder order = channel_order(spec);
    const int channels = std::ranges::max(order) + 1;
    std::vector<Sample> samples(static_cast<std::size_t>(spec.width) *
                                static_cast<std::size_t>(spec.height) *
                                static_cast<std::size_t>(channels));
    if (!input.read_image(subimage, 0, 0, channels, type, samples.data())) {
        fail("cannot be read", input.geterror());
    }
    unpack_samples(samples, channels, order, spec.x - spec.full_x, spec.y - spec.full_y, spec.width,
                   spec.height, picture);
}

Picture read_subimage(OIIO::ImageInput &input, int subimage) {
    if (!input.seek_subimage(subimage, 0)) {
        fail("frame " + std::to_string(subimage) + " cannot be read", input.geterror());
    }
    const OIIO::ImageSpec &spec = input.spec();
    if (spec.depth > 1 || spec.deep) fail("cannot be read: it is not a flat picture", "");
    if (spec.width > kMaxPictureSide || spec.height > kMaxPictureSide) {
        make_picture(spec.width, spec.height, SampleType::Float);
    }
    Picture picture = make_picture(spec.full_width, spec.full_height, SampleType::Float);
    switch (spec.format.basetype) {
        case OIIO::TypeDesc::UINT8:
            picture.native = SampleType::U8;
            read_samples<std::uint8_t>(input, subimage, OIIO::TypeDesc::UINT8, picture);
            break;
        case OIIO::TypeDesc::UINT16:
            picture.native = SampleType::U16;
            read_samples<std::uint16_t>(input, subimage, OIIO::TypeDesc::UINT16, picture);
            break;
        default:
            if (spec.format.basetype == OIIO::TypeDesc::HALF) picture.native = SampleType::Half;
            read_samples<float>(input, subimage, OIIO::TypeDesc::FLOAT, picture);
    }
    if (spec.alpha_channel >= 0 && spec.get_int_attribute("oiio:UnassociatedAlpha") == 0 &&
        !always_straight(input.format_name())) {
        unpremultiply(picture);
    }
    const float aspect = spec.get_float_attribute("PixelAspectRatio", 1.0f);
    if (aspect > 0.0f && aspect < 100.0f) picture.pixel_aspect = aspect;
    return picture;
}

// As the header says; files whose header is silent are walked through.
int frame_count_of(OIIO::ImageInput &input) {
    int frames = input.spec().get_int_attribute("oiio:subimages");
    if (frames > 0) return frames;
    for (frames = 0; input.seek_subimage(frames, 0);) ++frames;
    input.geterror();  // the failure that ended the walk
    return frames;
}

class VideoSource final : public PictureSource {
  public:
    explicit VideoSource(std::unique_ptr<OIIO::ImageInput> input) : input_(std::move(input)) {
        const OIIO::ImageSpec &spec = input_->spec();
        frames_ = frame_count_of(*input_);
        std::array<int, 2> rate = {};
        if (spec.getattribute("FramesPerSecond", OIIO::TypeRational, rate.data()) && rate[0] > 0 &&
            rate[1] > 0) {
            rate_ = FrameRate{rate[0], rate[1]};
        }
        if (frames_ < 1) fail("cannot be read: the video file has no frames", "");
    }
    bool still() const override { return false; }
    int first_frame() const override { return 0; }
    int frame_count() const override { return frames_; }
    std::optional<FrameRate> frame_rate() const override { return rate_; }
    Picture read(int frame) override {
        if (frame < 0 || frame >= frames_) {
            fail("there is no frame " + std::to_string(frame) + ", they are numbered 0 to " +
                     std::to_string(frames_ - 1),
                 "");
        }
        return read_subimage(*input_, frame);
    }

  private:
    std::unique_ptr<OIIO::ImageInput> input_;
    int frames_ = 0;
    std::optional<FrameRate> rate_;
};

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

std::span<const PictureFormat> formats() { return kFormats; }

Picture read(const std::filesystem::path &path) { return read_subimage(*open_file(path), 0); }

std::unique_ptr<PictureSource> open_video(const std::filesystem::path &path) {
    auto input = open_file(path);
    if (input->spec().get_int_attribute("oiio:Movie") == 0) return nullptr;
    return std::make_unique<VideoSource>(std::move(input));
}

void write(const std::filesystem::path &path, const Picture &picture, const PictureFormat &format,
           SampleType stored) {
    auto output = OIIO::ImageOutput::create(std::string(format.library_name));
    if (!output) fail("cannot be written", OIIO::geterror());
    if (!output->open(path.string(), output_spec(picture, format, stored))) {
        fail("cannot be written", output->geterror());
    }
    const bool written = write_stored(*output, picture, stored);
    const bool closed = output->close();
    if (!written || !closed) fail("cannot be written", output->geterror());
}

}  // namespace stage::backend
