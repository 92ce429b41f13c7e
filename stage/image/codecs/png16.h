// PNG files with 16 bits per channel, which stb reads but does not write.
#pragma once

#include <string>

#include "stage/image/picture.h"

namespace stage {

// Encodes red, green, blue and straight alpha as codes 0..65535. Throws PictureError with the
// reason when the picture is too large for the compressor (2 GB).
std::string encode_png16(const Picture &picture);

}  // namespace stage
