// Host worlds and scales as the host-free types of the pixel routines: conversions, nothing else.
#pragma once

#include "geometry/frame_scale.h"
#include "geometry/int_rect.h"
#include "hostapi/constants.h"
#include "hostapi/effect_types.h"
#include "hostapi/in_out_data.h"
#include "pixels/pixel_format.h"
#include "pixels/world_view.h"

namespace ks {

static_assert(kFormat8 == PF_PixelFormat_ARGB32 && kFormat16 == PF_PixelFormat_ARGB64 &&
              kFormatF == PF_PixelFormat_ARGB128 && kFormatInvalid == PF_PixelFormat_INVALID);
static_assert(kUnknownFormatError == PF_Err_BAD_CALLBACK_PARAM);
static_assert(sizeof(Pixel8) == sizeof(PF_Pixel8) && sizeof(Pixel16) == sizeof(PF_Pixel16) &&
              sizeof(PixelF) == sizeof(PF_PixelFloat));

inline WorldView view_of(const PF_EffectWorld &world) {
    return {world.data, world.rowbytes, world.width, world.height};
}

inline IntSize size_of(const PF_EffectWorld &world) {
    return {world.width, world.height};
}

/// Left 0, top 0, right the width, bottom the height.
inline PF_Rect full_rect(IntSize size) {
    return {0, 0, size.width, size.height};
}

inline Ratio ratio_of(const PF_RationalScale &scale) {
    return {scale.num, scale.den};
}

/// What the command's sizes are scaled by; see make_frame_scale.
inline FrameScale frame_scale_of(const PF_InData &in_data) {
    return make_frame_scale(ratio_of(in_data.pixel_aspect_ratio), ratio_of(in_data.downsample_x),
                            ratio_of(in_data.downsample_y));
}

inline PF_Rect host_rect(const IntRect &rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace ks
