// Writes small compressed video files, so that seeking between key frames can be tested.
#pragma once

#include <filesystem>
#include <functional>

namespace stage::test {

struct CodedVideo {
    int width = 64;
    int height = 48;
    int frames = 50;
    int key_interval = 12;
    int reordered_frames = 2;  // B frames in a row: stored in another order than shown
    int first_time = 0;        // of the first frame, in frames of 1/25 s
};

// Writes `path` (MPEG-4 part 2; the extension chooses the container) with frames of one luma code
// each: luma(frame), narrow range, and neutral colour. Throws std::runtime_error.
void write_coded_video(const std::filesystem::path &path, const CodedVideo &video,
                       const std::function<int(int)> &luma);

}  // namespace stage::test
