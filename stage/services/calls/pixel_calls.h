// Copy, fill, transfer and transform, shared by the world transform suite and the callback table:
// bodies with the arguments of their slots, and for each the text of its arguments. Worlds of one
// call must have the same depth, else error 516; dead worlds are a finding and error 516. Where the
// schedule has real threads, a transform shares its rows out to them; no code of the plug-in runs
// there. [host thread]
#pragma once

#include <string>

#include "stage/host/call_table.h"

namespace stage::calls {

/// Stretches by the quality of the command under way. Null rectangles are whole worlds; see
/// copy_pixels.
PF_Err copy(HostCall &call, PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
            PF_Rect *dst_rect);
/// Always interpolates.
PF_Err copy_hq(HostCall &call, PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst,
               PF_Rect *src_rect, PF_Rect *dst_rect);
std::string describe_copy(PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
                          PF_Rect *dst_rect);

/// Null colour is transparent black, null rectangle the whole world. Colour codes are converted to
/// the world's depth; see fill_pixels. For PF_Pixel and PF_Pixel16.
template <class Colour>
PF_Err fill(HostCall &call, PF_ProgPtr, const Colour *colour, const PF_Rect *rect,
            PF_EffectWorld *world);
template <class Colour>
std::string describe_fill(PF_ProgPtr, const Colour *, const PF_Rect *rect, PF_EffectWorld *world);

/// See transfer_pixels. Error 516 for a mask (not carried out), a null composite mode and transfer
/// modes that make_compositing does not know. The field is not looked at: whole frames only.
PF_Err transfer_rect(HostCall &call, PF_ProgPtr, PF_Quality, PF_ModeFlags flags, PF_Field,
                     const PF_Rect *src_rect, const PF_EffectWorld *src,
                     const PF_CompositeMode &mode, const PF_MaskWorld *mask, A_long x, A_long y,
                     PF_EffectWorld *dst);
std::string describe_transfer(PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                              const PF_Rect *src_rect, const PF_EffectWorld *src,
                              const PF_CompositeMode *mode, const PF_MaskWorld *, A_long x,
                              A_long y, PF_EffectWorld *dst);

/// See transform_pixels: bilinear at high quality, else nearest. A matrix that cannot be inverted
/// or is not finite draws nothing and succeeds. Error 516 as for transfer_rect, and for any number
/// of matrices but one (no motion blur). Null `dst_rect` is the whole destination.
PF_Err transform_world(HostCall &call, PF_ProgPtr, PF_Quality quality, PF_ModeFlags flags, PF_Field,
                       const PF_EffectWorld *src, const PF_CompositeMode &mode,
                       const PF_MaskWorld *mask, const PF_FloatMatrix &matrix, A_long count,
                       PF_Boolean source_to_destination, const PF_Rect *dst_rect,
                       PF_EffectWorld *dst);
std::string describe_transform(PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                               const PF_EffectWorld *src, const PF_CompositeMode *mode,
                               const PF_MaskWorld *, const PF_FloatMatrix *, A_long, PF_Boolean,
                               const PF_Rect *dst_rect, PF_EffectWorld *dst);

}  // namespace stage::calls
