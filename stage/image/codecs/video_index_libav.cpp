#include "stage/image/codecs/video_index.h"

#include <algorithm>
#include <utility>

namespace stage {
namespace {

void sort_unique(std::vector<std::int64_t> &times) {
    std::ranges::sort(times);
    times.erase(std::ranges::unique(times).begin(), times.end());
}

}  // namespace

VideoIndex::VideoIndex(AVFormatContext &file, int stream) {
    std::vector<std::int64_t> decoding_times;
    const libav::Owner<AVPacket> packet(av_packet_alloc());
    while (av_read_frame(&file, packet.get()) >= 0) {
        const bool shown = (packet->flags & AV_PKT_FLAG_DISCARD) == 0;
        if (packet->stream_index == stream && packet->size > 0 && shown) {
            timed_ = timed_ && packet->pts != AV_NOPTS_VALUE;
            times_.push_back(packet->pts);
            decoding_times.push_back(packet->dts);
            if ((packet->flags & AV_PKT_FLAG_KEY) != 0) keys_.push_back(packet->pts);
        }
        av_packet_unref(packet.get());
    }
    if (!timed_) {
        times_ = std::move(decoding_times);
        keys_.clear();
    }
    sort_unique(times_);
    sort_unique(keys_);
}

std::optional<int> VideoIndex::frame_at(std::int64_t time) const {
    const auto found = std::ranges::lower_bound(times_, time);
    if (found == times_.end() || *found != time) return std::nullopt;
    return static_cast<int>(found - times_.begin());
}

bool VideoIndex::key_frame_between(int from, int to) const {
    const auto next = std::ranges::upper_bound(keys_, time(from));
    return next != keys_.end() && *next <= time(to);
}

}  // namespace stage
