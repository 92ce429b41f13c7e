// Whether a PNG or JPEG file is all there. JPEG decoders paint what is missing grey and report
// success, and a frame that is still being copied must not pass for a picture.
#pragma once

#include <string_view>

namespace stage {

// True when `start`, the first bytes of a file (4 are enough), are those of a format that cut_off()
// knows.
bool may_be_cut_off(std::string_view start);

// True when the whole file `bytes` is a PNG or JPEG file that ends before the format's own end
// mark. Bytes after the mark are not looked at.
bool cut_off(std::string_view bytes);

}  // namespace stage
