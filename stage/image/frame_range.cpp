#include "stage/image/frame_range.h"

#include <charconv>
#include <string>

#include "stage/image/picture.h"

namespace stage {
namespace {

// Reads a whole text of digits; false when it is anything else or does not fit an int.
bool read_number(std::string_view text, int &number) {
    if (text.empty() || text.front() < '0' || text.front() > '9') return false;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

FrameRange parse_frame_range(std::string_view text) {
    const std::size_t dash = text.find('-');
    FrameRange range;
    bool good = read_number(text.substr(0, dash), range.first);
    range.last = range.first;
    if (good && dash != std::string_view::npos) {
        good = read_number(text.substr(dash + 1), range.last);
    }
    if (!good) {
        throw PictureError("\"" + std::string(text) +
                           "\" is not a range of frames: write A-B or A, for example 10-24");
    }
    if (range.last < range.first) {
        throw PictureError("\"" + std::string(text) +
                           "\" is not a range of frames: it ends before it starts");
    }
    return range;
}

}  // namespace stage
