// Owners of libav's objects. Included by the video files alone.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace stage::libav {

struct Delete {
    void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

template <typename T>
using Owner = std::unique_ptr<T, Delete>;

}  // namespace stage::libav
