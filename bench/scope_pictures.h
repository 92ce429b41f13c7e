// The pictures that the scopes' benchmarks measure.
#pragma once

#include <string>

#include "stage/image/picture.h"

namespace ks_bench {

/// "bars": 75 % colour bars. "noise": every channel uniform over 0..1. "natural": a photograph
/// scaled to fill the size, or waves of light and shade where there is none; both carry a dither of
/// one 8-bit code, so that deep pixels use all their codes. The latest picture is kept. Throws
/// stage::PictureError for any other name.
const stage::Picture &scope_picture(const std::string &name, int width, int height);

/// What the natural picture is: the photograph's file name, or "synthetic".
std::string natural_source();

}  // namespace ks_bench
