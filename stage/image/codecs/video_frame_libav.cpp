#include "stage/image/codecs/video_frame.h"

#include <cstdint>
#include <vector>

#include "stage/image/codecs/packed_samples.h"

namespace stage {
namespace {

constexpr int kChannels = 4;
constexpr int kMatrixRows = 720;  // pictures from this height on are BT.709 by custom

bool full_range(const AVFrame &frame) {
    switch (frame.format) {
        case AV_PIX_FMT_YUVJ420P:
        case AV_PIX_FMT_YUVJ422P:
        case AV_PIX_FMT_YUVJ444P:
        case AV_PIX_FMT_YUVJ440P:
        case AV_PIX_FMT_YUVJ411P:
            return true;
        default:
            return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

int matrix_of(const AVFrame &frame) {
    if (frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB) {
        return frame.colorspace;  // the scaler counts the matrices as the frame does
    }
    return frame.height < kMatrixRows ? SWS_CS_ITU601 : SWS_CS_ITU709;
}

// Rows of `Sample`, each padded to what the scaler's vector code may write.
template <typename Sample>
Picture scaled(SwsContext *scaler, const AVFrame &frame, bool has_alpha, SampleType native) {
    constexpr std::size_t kAlignment = 64;
    const auto width = static_cast<std::size_t>(frame.width);
    const std::size_t row_bytes =
        (width * kChannels * sizeof(Sample) + kAlignment - 1) / kAlignment * kAlignment;
    const std::size_t row_samples = row_bytes / sizeof(Sample);
    std::vector<Sample> samples(row_samples * static_cast<std::size_t>(frame.height) + kAlignment);
    std::uint8_t *const planes[4] = {reinterpret_cast<std::uint8_t *>(samples.data())};
    const int strides[4] = {static_cast<int>(row_bytes)};
    if (sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, planes, strides) !=
        frame.height) {
        throw PictureError("cannot be read: the frame cannot be converted to RGB");
    }
    Picture picture = make_picture(frame.width, frame.height, native);
    const ChannelOrder order = {has_alpha ? 3 : -1, 0, 1, 2};
    for (int y = 0; y < frame.height; ++y) {
        unpack_samples(samples.data() + row_samples * static_cast<std::size_t>(y), kChannels, order,
                       0, y, frame.width, 1, picture);
    }
    return picture;
}

}  // namespace

void VideoFrameConverter::prepare(const AVFrame &frame, AVPixelFormat target) {
    scaler_.reset(sws_getCachedContext(
        scaler_.release(), frame.width, frame.height, static_cast<AVPixelFormat>(frame.format),
        frame.width, frame.height, target, SWS_BILINEAR | SWS_FULL_CHR_H_INT | SWS_ACCURATE_RND,
        nullptr, nullptr, nullptr));
    if (!scaler_) throw PictureError("cannot be read: the kind of pixels is not supported");
    constexpr int kUnchanged = 1 << 16;  // contrast and saturation, 16.16
    sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(matrix_of(frame)),
                             full_range(frame) ? 1 : 0, sws_getCoefficients(SWS_CS_DEFAULT), 1, 0,
                             kUnchanged, kUnchanged);
}

Picture VideoFrameConverter::convert(const AVFrame &frame) {
    const AVPixFmtDescriptor *format =
        av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    if (format == nullptr) throw PictureError("cannot be read: the kind of pixels is not known");
    const bool has_alpha = (format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
    if (format->comp[0].depth > 8) {
        prepare(frame, AV_PIX_FMT_RGBA64);
        return scaled<std::uint16_t>(scaler_.get(), frame, has_alpha, SampleType::U16);
    }
    prepare(frame, AV_PIX_FMT_RGBA);
    return scaled<std::uint8_t>(scaler_.get(), frame, has_alpha, SampleType::U8);
}

}  // namespace stage
