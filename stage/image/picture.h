// A picture as the stage holds it, and its conversion to and from rows of host pixels.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace stage {

// The sample type in which a picture was stored. HostU16 holds the host's 16-bit codes 0..32768,
// U16 the usual 0..65535 of files.
enum class SampleType { U8, U16, HostU16, Half, Float };

// Bits per channel of a host world: 8 (codes 0..255), 16 (codes 0..32768) or 32 (float).
enum class Depth { U8 = 8, U16 = 16, Float = 32 };

// Full scale of the host's integer depths. The host's 16-bit white is 32768, not 65535.
inline constexpr int kWhite8 = 255;
inline constexpr int kWhite16 = 32768;

// Whatever goes wrong with pictures: one line without a line break, "FILE: reason" where a file is
// at fault.
class PictureError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Pixels from the top row down, each four floats in the order alpha, red, green, blue, without
// padding: sample c of pixel (x, y) is argb[(y * width + x) * 4 + c]. Alpha is straight. 1.0 is
// full scale of the integer sample types; values of float files are kept as they are, out of range
// and not finite ones included. No colour management takes place anywhere.
struct Picture {
    int width = 0;
    int height = 0;
    SampleType native = SampleType::Float;
    double pixel_aspect = 1.0;  // width of a pixel divided by its height
    std::vector<float> argb;

    // The four samples of pixel (x, y), which must lie inside the picture.
    float *at(int x, int y) { return argb.data() + offset(x, y); }
    const float *at(int x, int y) const { return argb.data() + offset(x, y); }

    std::size_t offset(int x, int y) const {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                static_cast<std::size_t>(x)) *
               4;
    }
};

// The largest width and height of a picture: the host's limit for a composition.
inline constexpr int kMaxPictureSide = 30000;

// A transparent black picture. Throws PictureError unless both sides are 1..kMaxPictureSide.
Picture make_picture(int width, int height, SampleType native);

// Throws PictureError unless the sides are 1..kMaxPictureSide and `argb` has width*height*4 floats.
void check_picture(const Picture &picture);

// Writes the picture into rows of host pixels, 4, 8 or 16 bytes each in the order alpha, red,
// green, blue. Row y starts at `base` + y * `rowbytes`; bytes beyond the pixels of a row are left
// alone. `base` and `rowbytes` must be aligned to the sample. Integer codes are the nearest ones to
// value * full scale (halves upwards), clamped to 0..full scale; NaN gives 0. Floats are copied.
void to_rows8(const Picture &picture, void *base, std::ptrdiff_t rowbytes);
void to_rows16(const Picture &picture, void *base, std::ptrdiff_t rowbytes);
void to_rowsf(const Picture &picture, void *base, std::ptrdiff_t rowbytes);
void to_rows(const Picture &picture, Depth depth, void *base, std::ptrdiff_t rowbytes);

// The reverse. 8-bit codes are divided by 255 and 16-bit ones by 32768, beyond which they are not
// clamped; floats are copied. `native` becomes U8, HostU16 or Float. Throws as make_picture does.
Picture from_rows(Depth depth, const void *base, std::ptrdiff_t rowbytes, int width, int height);

// Straight to premultiplied colour and back, in place. Where alpha is 0 colour is kept in both
// directions: there is nothing to divide by, and a straight colour under alpha 0 survives a file
// that stores premultiplied colour. Where alpha is 1 nothing changes, not even a NaN.
void premultiply(Picture &picture);
void unpremultiply(Picture &picture);

// The depth written as bits per channel, 8, 16 or 32. Throws PictureError for any other number.
Depth depth_from_bits(int bits);

}  // namespace stage
