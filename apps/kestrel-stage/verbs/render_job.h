// One rendering run of the command line: what to render, and doing it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace stage_cli {

/// The options of `render` and `trace`, as typed.
struct RenderJob {
    std::string input;               ///< file, pattern or video; UTF-8
    std::string chart;               ///< or a built-in chart
    std::string size = "1920x1080";  ///< of the chart
    std::string output;
    std::string frames;                 ///< "A-B", "" for all
    std::vector<std::string> settings;  ///< NAME=VALUE
    std::string original;
    int depth = 0;  ///< 8, 16, 32; 0 as the input
    std::string downsample = "1";
    std::string pixel_aspect = "1";
    int threads = 0;                       ///< 0: as many as the machine has
    std::optional<std::uint64_t> shuffle;  ///< seed of a shuffled schedule
    std::string quality = "hi";
    std::string apply_to = "adjustment";
    std::string region;  ///< "LEFT,TOP,RIGHT,BOTTOM"
    std::string plugin;
    std::string project;  ///< project file to load
    std::string save_project;
    bool separate_render_copy = false;
};

/// Renders the job, writes the pictures, prints messages and findings to standard error. With
/// `trace` every host call goes to standard output, and the output file may be left out. Returns
/// the exit status; throws std::exception with one line.
int run_render(const RenderJob &job, bool trace);

}  // namespace stage_cli
