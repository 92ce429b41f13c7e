// PFM and PAM: simple files that both builds read and write without loss.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "stage/image/picture.h"
#include "stage/image/picture_format.h"

namespace stage::netpbm {

// The rows of PFM and PAM.
std::span<const PictureFormat> formats();

// Decodes a whole file: PFM ("PF", "Pf", "PF4"; either byte order, bottom row first; its scale is
// not applied) or PAM with a depth of 1 to 4 channels and any maximum to 65535. Maximum 255 gives
// SampleType::U8, 32768 HostU16, others U8 to 255 and U16 above. Throws PictureError with the
// reason.
Picture decode(std::string_view bytes);

// Encodes a PFM file, little-endian: "PF" when alpha is 1 everywhere, else "PF4" (red, green, blue,
// alpha).
std::string encode_pfm(const Picture &picture);

// Encodes a PAM file of the type RGB_ALPHA. `maximum` is the code of 1.0, at most 65535; codes
// above 255 take two bytes, the high one first.
std::string encode_pam(const Picture &picture, int maximum);

}  // namespace stage::netpbm
