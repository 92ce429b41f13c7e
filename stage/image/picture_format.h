// The file formats that pictures are written in.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "stage/image/picture.h"

namespace stage {

// What becomes of alpha: dropped, stored beside straight colour, or stored with premultiplied
// colour.
enum class AlphaStorage { None, Straight, Premultiplied };

// One format of files. `stored8`, `stored16` and `stored_float` are the sample types in which it
// stores a picture of each depth: its widest integers for a depth that it cannot hold.
struct PictureFormat {
    std::string_view
        extension;  // lower case, without the dot; the first row of a name is preferred
    std::string_view library_name;  // how the picture library calls it
    AlphaStorage alpha;
    SampleType stored8;
    SampleType stored16;
    SampleType stored_float;

    SampleType stored(Depth depth) const {
        return depth == Depth::U8 ? stored8 : depth == Depth::U16 ? stored16 : stored_float;
    }
};

// The extension of `path` in lower case without its dot.
std::string extension_of(const std::filesystem::path &path);

// The row of `extension`, or null.
const PictureFormat *find_format(std::span<const PictureFormat> formats,
                                 std::string_view extension);

// The extensions of both tables, "png, jpg and pam".
std::string list_extensions(std::span<const PictureFormat> formats,
                            std::span<const PictureFormat> more);

}  // namespace stage
