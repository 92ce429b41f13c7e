// What the picture library of a build has to provide: OpenImageIO natively, stb in the Windows build.
// Only this folder includes it.
#pragma once

#include <filesystem>
#include <memory>
#include <span>

#include "stage/image/picture.h"
#include "stage/image/picture_format.h"
#include "stage/image/picture_io.h"

namespace stage::backend {

// The formats that the library writes.
std::span<const PictureFormat> formats();

// Reads a still. Throws PictureError with the reason alone, without the file name.
Picture read(const std::filesystem::path &path);

// Writes `picture`, whose alpha is as the format stores it, to `path`, an existing empty file whose
// name carries the same extension. Throws PictureError with the reason alone.
void write(const std::filesystem::path &path, const Picture &picture, const PictureFormat &format,
           SampleType stored);

// Opens a video file, or gives null when the file is none. Throws PictureError with the reason alone.
std::unique_ptr<PictureSource> open_video(const std::filesystem::path &path);

}  // namespace stage::backend
