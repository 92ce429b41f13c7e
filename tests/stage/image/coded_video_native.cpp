#include "stage/image/coded_video.h"

#include <cstring>
#include <stdexcept>

#include "stage/image/codecs/libav.h"

namespace stage::test {
namespace {

void check(int code, const char *what) {
    if (code < 0) throw std::runtime_error(what);
}

class Writer {
  public:
    Writer(const std::filesystem::path &path, const CodedVideo &video) {
        check(avformat_alloc_output_context2(&file_, nullptr, nullptr, path.c_str()), "container");
        const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
        if (codec == nullptr) throw std::runtime_error("encoder");
        encoder_.reset(avcodec_alloc_context3(codec));
        encoder_->width = video.width;
        encoder_->height = video.height;
        encoder_->pix_fmt = AV_PIX_FMT_YUV420P;
        encoder_->time_base = {1, 25};
        encoder_->framerate = {25, 1};
        encoder_->gop_size = video.key_interval;
        encoder_->max_b_frames = video.reordered_frames;
        encoder_->bit_rate = 4'000'000;
        if ((file_->oformat->flags & AVFMT_GLOBALHEADER) != 0) {
            encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        }
        check(avcodec_open2(encoder_.get(), codec, nullptr), "encoder");
        stream_ = avformat_new_stream(file_, nullptr);
        stream_->time_base = encoder_->time_base;
        stream_->avg_frame_rate = encoder_->framerate;
        check(avcodec_parameters_from_context(stream_->codecpar, encoder_.get()), "stream");
        check(avio_open(&file_->pb, path.c_str(), AVIO_FLAG_WRITE), "file");
        check(avformat_write_header(file_, nullptr), "header");
    }
    ~Writer() {
        if (file_ != nullptr && file_->pb != nullptr) avio_closep(&file_->pb);
        avformat_free_context(file_);
    }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    // Null ends the stream.
    void encode(const AVFrame *frame) {
        check(avcodec_send_frame(encoder_.get(), frame), "frame");
        const libav::Owner<AVPacket> packet(av_packet_alloc());
        while (avcodec_receive_packet(encoder_.get(), packet.get()) >= 0) {
            av_packet_rescale_ts(packet.get(), encoder_->time_base, stream_->time_base);
            packet->stream_index = stream_->index;
            check(av_interleaved_write_frame(file_, packet.get()), "packet");
        }
    }

    void finish() {
        encode(nullptr);
        check(av_write_trailer(file_), "trailer");
    }

  private:
    AVFormatContext *file_ = nullptr;
    libav::Owner<AVCodecContext> encoder_;
    AVStream *stream_ = nullptr;
};

void fill_plane(AVFrame &frame, int plane, int rows, int code) {
    std::memset(frame.data[plane], code,
                static_cast<std::size_t>(frame.linesize[plane]) * static_cast<std::size_t>(rows));
}

}  // namespace

void write_coded_video(const std::filesystem::path &path, const CodedVideo &video,
                       const std::function<int(int)> &luma) {
    Writer writer(path, video);
    for (int number = 0; number < video.frames; ++number) {
        const libav::Owner<AVFrame> frame(av_frame_alloc());
        frame->format = AV_PIX_FMT_YUV420P;
        frame->width = video.width;
        frame->height = video.height;
        frame->pts = video.first_time + number;
        check(av_frame_get_buffer(frame.get(), 0), "frame");
        fill_plane(*frame, 0, video.height, luma(number));
        fill_plane(*frame, 1, video.height / 2, 128);
        fill_plane(*frame, 2, video.height / 2, 128);
        writer.encode(frame.get());
    }
    writer.finish();
}

}  // namespace stage::test
