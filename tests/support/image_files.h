// Pictures written for a person to look at after a failed test.
#pragma once

#include <string>

#include "oracle/image.h"

namespace ks::test_support {

// Writes <build folder>/image-diff/<stem>.ppm (integer depths, binary, maximum 255 or 32768) or
// .pfm (float, rows from the bottom, little-endian), without alpha. Returns the file's path, or a
// line that says why it could not be written.
std::string write_picture(const std::string &stem, const oracle::Image &image);

}  // namespace ks::test_support
