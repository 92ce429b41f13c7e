// Video files by libav, in the native build.
#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string>

#include "stage/image/codecs/picture_backend.h"
#include "stage/image/codecs/video_frame.h"
#include "stage/image/codecs/video_index.h"

namespace stage::backend {
namespace {

constexpr std::array<std::string_view, 15> kExtensions = {"3g2", "3gp", "avi", "m2ts", "m4v",
                                                          "mkv", "mov", "mp4", "mpeg", "mpg",
                                                          "mts", "mxf", "ogv", "ts",   "webm"};

[[noreturn]] void fail(const std::string &what, int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    throw PictureError("cannot be read: " + what + ": " + text.data());
}

libav::Owner<AVFormatContext> open_container(const std::filesystem::path &path) {
    av_log_set_level(AV_LOG_QUIET);  // what matters arrives as a PictureError
    AVFormatContext *context = nullptr;
    // The prefix keeps a colon in a file name from being taken for a protocol.
    const std::string name = "file:" + path.string();
    const int code = avformat_open_input(&context, name.c_str(), nullptr, nullptr);
    if (code < 0) fail("the file is no video", code);
    libav::Owner<AVFormatContext> owner(context);
    if (const int found = avformat_find_stream_info(context, nullptr); found < 0) {
        fail("the file is no video", found);
    }
    return owner;
}

// The video stream and a decoder for it; all other streams are switched off.
struct OpenStream {
    AVStream *stream = nullptr;
    libav::Owner<AVCodecContext> decoder;
};

OpenStream open_stream(AVFormatContext &file) {
    const AVCodec *codec = nullptr;
    const int index = av_find_best_stream(&file, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0) fail("the file has no video that can be decoded", index);
    for (unsigned i = 0; i < file.nb_streams; ++i) {
        if (i != static_cast<unsigned>(index)) file.streams[i]->discard = AVDISCARD_ALL;
    }
    OpenStream open;
    open.stream = file.streams[index];
    open.decoder.reset(avcodec_alloc_context3(codec));
    int code = AVERROR(ENOMEM);
    if (open.decoder) {
        code = avcodec_parameters_to_context(open.decoder.get(), open.stream->codecpar);
        open.decoder->pkt_timebase = open.stream->time_base;
        // Threads of the decoder would hold frames back at every seek; rendering takes far longer.
        open.decoder->thread_count = 1;
    }
    if (code >= 0) code = avcodec_open2(open.decoder.get(), codec, nullptr);
    if (code < 0) fail("the decoder does not start", code);
    return open;
}

class VideoSource final : public PictureSource {
  public:
    explicit VideoSource(const std::filesystem::path &path)
        : file_(open_container(path)),
          open_(open_stream(*file_)),
          packet_(av_packet_alloc()),
          frame_(av_frame_alloc()),
          index_(*file_, open_.stream->index) {
        if (index_.frame_count() == 0) {
            throw PictureError("cannot be read: the video has no frames");
        }
    }

    bool still() const override { return false; }
    int first_frame() const override { return 0; }
    int frame_count() const override { return index_.frame_count(); }

    std::optional<FrameRate> frame_rate() const override {
        const AVRational rate = av_guess_frame_rate(file_.get(), open_.stream, nullptr);
        if (rate.num <= 0 || rate.den <= 0) return std::nullopt;
        return FrameRate{rate.num, rate.den};
    }

    Picture read(int frame) override {
        if (frame < 0 || frame >= frame_count()) {
            throw PictureError("there is no frame " + std::to_string(frame) +
                               ", they are numbered 0 to " + std::to_string(frame_count() - 1));
        }
        decode(frame);
        if ((frame_->flags & AV_FRAME_FLAG_CORRUPT) != 0 || frame_->decode_error_flags != 0) {
            fail_frame(frame);
        }
        Picture picture = converter_.convert(*frame_);
        const AVRational aspect =
            av_guess_sample_aspect_ratio(file_.get(), open_.stream, frame_.get());
        if (aspect.num > 0 && aspect.den > 0) picture.pixel_aspect = av_q2d(aspect);
        return picture;
    }

  private:
    [[noreturn]] static void fail_frame(int frame) {
        throw PictureError("cannot be read: frame " + std::to_string(frame) + " is damaged");
    }

    // Leaves `frame` in frame_. Goes on from the frame decoded last unless that is too far.
    void decode(int frame) {
        if (current_ == frame) return;
        const bool onward = current_ && *current_ < frame &&
                            (frame == *current_ + 1 || !index_.key_frame_between(*current_, frame));
        if (!onward) seek(index_.timed() ? index_.time(frame) : index_.time(0));
        if (decode_up_to(frame)) return;
        // Some containers find a later key frame than asked for: then the way leads from the start.
        seek(index_.time(0));
        if (!decode_up_to(frame)) fail_frame(frame);
    }

    void seek(std::int64_t time) {
        current_.reset();
        decoded_ = 0;
        draining_ = false;
        const int code =
            av_seek_frame(file_.get(), open_.stream->index, time, AVSEEK_FLAG_BACKWARD);
        if (code < 0) fail("the file cannot be positioned", code);
        avcodec_flush_buffers(open_.decoder.get());
    }

    // Decodes until `frame` is there; false when it was passed over or the stream ends.
    bool decode_up_to(int frame) {
        while (next_decoded()) {
            current_ = index_.timed() ? index_.frame_at(frame_->best_effort_timestamp) : decoded_;
            ++decoded_;
            if (current_ == frame) return true;
            if (index_.timed() && frame_->best_effort_timestamp > index_.time(frame)) break;
        }
        current_.reset();
        return false;
    }

    // The decoder's next frame, fed with packets as needed; false at the end.
    bool next_decoded() {
        for (;;) {
            const int code = avcodec_receive_frame(open_.decoder.get(), frame_.get());
            if (code >= 0) return true;
            const bool damaged = code == AVERROR_INVALIDDATA && index_.timed();
            if (code != AVERROR(EAGAIN) && !damaged) return false;
            if (code == AVERROR(EAGAIN) && !feed()) return false;
        }
    }

    // Sends one packet, or the end of the stream; false when there is nothing more to send. A
    // damaged packet is passed over, and its frame missed when it is asked for; where frames are
    // counted, the count ends there.
    bool feed() {
        if (draining_) return false;
        if (av_read_frame(file_.get(), packet_.get()) < 0) {
            draining_ = true;
            return avcodec_send_packet(open_.decoder.get(), nullptr) >= 0;
        }
        int code = 0;
        if (packet_->stream_index == open_.stream->index) {
            code = avcodec_send_packet(open_.decoder.get(), packet_.get());
        }
        av_packet_unref(packet_.get());
        return code >= 0 || index_.timed();
    }

    libav::Owner<AVFormatContext> file_;
    OpenStream open_;
    libav::Owner<AVPacket> packet_;
    libav::Owner<AVFrame> frame_;
    VideoIndex index_;
    VideoFrameConverter converter_;
    std::optional<int> current_;  // the frame in frame_
    int decoded_ = 0;             // frames decoded since the last seek
    bool draining_ = true;        // the index has read to the end; the first read starts by seeking
};

}  // namespace

std::unique_ptr<PictureSource> open_video(const std::filesystem::path &path) {
    if (std::ranges::find(kExtensions, extension_of(path)) == kExtensions.end()) return nullptr;
    return std::make_unique<VideoSource>(path);
}

}  // namespace stage::backend
