// Reading and writing of pictures: stills, numbered sequences and video files.
//
// Natively OpenImageIO reads and writes (PNG, JPEG, TIFF, DPX, OpenEXR and more) and libav reads
// video files; in the Windows build stb reads and writes PNG, JPEG and Radiance HDR. PFM and PAM
// work alike in both builds and lose nothing: PFM holds floats ("PF", or "PF4" with alpha), PAM
// integer codes with alpha.
//
// Every function throws PictureError "FILE: reason" and may be called from any thread; one
// PictureSource is used by one thread at a time.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "stage/image/picture.h"

namespace stage {

// Frames per second as a fraction.
struct FrameRate {
    int numerator = 0;
    int denominator = 1;

    double per_second() const { return static_cast<double>(numerator) / denominator; }
};

// A still, a numbered sequence or a video file, opened for reading.
class PictureSource {
  public:
    virtual ~PictureSource() = default;

    // True for a single picture, which is the same at every frame.
    virtual bool still() const = 0;

    // Frames are numbered from first_frame() to first_frame() + frame_count() - 1: a sequence as
    // its file names say (a gap counts; reading it fails), video and stills from 0.
    virtual int first_frame() const = 0;
    virtual int frame_count() const = 0;

    // The rate written in the file; only video files have one.
    virtual std::optional<FrameRate> frame_rate() const = 0;

    // The picture of `frame`. Reading in ascending order is fast. A still takes any number. A frame
    // that is missing or damaged is an error and never another frame.
    virtual Picture read(int frame) = 0;
};

// Opens a file, or a sequence by a pattern such as "shot.%04d.exr".
std::unique_ptr<PictureSource> open_pictures(const std::filesystem::path &path);

// One picture of what open_pictures() opens. Grey files give equal colours; without alpha in the
// file it is 1; premultiplied files (OpenEXR, associated TIFF) are unpremultiplied. Of an OpenEXR
// file the display window is read, transparent black where there is no data.
Picture read_picture(const std::filesystem::path &path, int frame = 0);

// Writes one file, whole or not at all; the extension chooses the format. The samples are those of
// `depth` as far as the format has them:
//
//   depth  png  tif    dpx  jpg  exr    hdr    pam  pfm
//   8      8    8      8    8    float  float  8    float
//   16     16   16     16   8    float  float  16   float
//   float  16   float  16   8    float  float  16   float
//
// Integers are the nearest codes, clamped to 0..full scale. The full scale of 16-bit files is
// 65535, except of PAM files of pictures in the host's 16-bit codes, where it is 32768 so that the
// codes stay the same. JPEG and HDR drop alpha; OpenEXR stores premultiplied colour.
void write_picture(const std::filesystem::path &path, const Picture &picture, Depth depth);

// The extensions that write_picture() takes in this build, "png, tif, ... and pam".
std::string writable_extensions();

}  // namespace stage
