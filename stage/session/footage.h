// Opening footage: picture files, sequences, video and built-in charts as readers of frames.
#pragma once

#include <filesystem>
#include <string>

#include "stage/image/picture.h"
#include "stage/project/project_file.h"

namespace stage {

/// Footage with what a command line wants to know of it beside the reader.
struct Footage {
    OpenedFootage opened;
    std::string path,
        chart;  ///< by which a project file finds it again: UTF-8, absolute; or a chart
    std::int64_t first_frame = 0;  ///< number in the file names; `opened.reader` counts from 0
    bool still = true;
    SampleType native = SampleType::U8;
    int rate_num = 25, rate_den = 1;
};

/// Opens a picture, a printf pattern or a video file. The last frame read is kept. Throws
/// PictureError.
Footage open_footage_file(const std::filesystem::path &file);
/// A built-in chart. Throws PictureError for an unknown name.
Footage open_chart(const std::string &name, int width, int height);
/// A picture in memory; its item has no place to be loaded from again.
Footage still_footage(Picture picture);
/// The project's item of it, of the duration of all its frames.
Item footage_item(const Footage &footage, const std::string &name, int par_num, int par_den);
/// The opener that project files are loaded with.
OpenedFootage open_footage(const FootageRequest &request);

}  // namespace stage
