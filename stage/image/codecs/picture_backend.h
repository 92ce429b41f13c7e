// What the picture library of a build has to provide: OpenImageIO natively, stb in the Windows
// build. Only this folder includes it.
#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "stage/image/codecs/picture_io.h"
#include "stage/image/picture.h"
#include "stage/image/picture_format.h"

namespace stage::backend {

// The formats that the library writes.
std::span<const PictureFormat> formats();

// Reads a still. Throws PictureError with the reason alone, without the file name.
Picture read(const std::filesystem::path &path);

// The bytes of a file of `format` with samples of the type `stored`. Alpha of `picture` is already
// as the format stores it. Throws PictureError with the reason alone.
std::string encode(const Picture &picture, const PictureFormat &format, SampleType stored);

// Opens a video file, or gives null when the file is none. Throws PictureError with the reason
// alone.
std::unique_ptr<PictureSource> open_video(const std::filesystem::path &path);

}  // namespace stage::backend
