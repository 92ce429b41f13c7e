// The interactive window of the stage.
#pragma once

#include <filesystem>

namespace stage_view {

/// What the command line asks for. Empty paths are options left out.
struct ViewOptions {
    std::filesystem::path picture;  ///< file, number pattern or video; the test card without one
    std::filesystem::path project;  ///< project file, instead of a picture
    std::filesystem::path plugin;
    std::filesystem::path report;      ///< JSON, rewritten after every settled frame
    std::filesystem::path screenshot;  ///< picture of the window, written at the end
    int width = 1600, height = 900;    ///< of the window, pixels
    int frames = 0;                    ///< ends after that many settled frames; 0: when closed
};

/// Opens the window and runs it until it is closed. True when the plug-in broke rules of the host.
/// Everything happens on the calling thread. Throws std::exception with one line when the plug-in,
/// the picture or the window cannot be had.
bool run_view(const ViewOptions &options);

}  // namespace stage_view
