// Copy, fill, transfer and transform, shared by the world transform suite and the callback table.
// `name` is the trace name. Worlds of one call must have the same depth, else error 516; dead
// worlds are a finding and error 516. Where the schedule has real threads, a transform shares its
// rows out to them; no code of the plug-in runs there. [host thread]
#pragma once

#include "hostapi/effect_types.h"

namespace stage::calls {

/// How a copy stretches: by the quality of the command under way, or always interpolated.
enum class CopyQuality { kOfCommand, kHigh };

/// Null rectangles are whole worlds; see copy_pixels.
PF_Err copy(const char *name, CopyQuality quality, const PF_EffectWorld *src,
            const PF_EffectWorld *dst, const PF_LRect *src_rect, const PF_LRect *dst_rect) noexcept;

/// Null colour is transparent black, null rectangle the whole world. Colour codes are converted to
/// the world's depth; see fill_pixels.
PF_Err fill(const char *name, const PF_Pixel *colour, const PF_LRect *rect,
            const PF_EffectWorld *world) noexcept;
PF_Err fill16(const char *name, const PF_Pixel16 *colour, const PF_LRect *rect,
              const PF_EffectWorld *world) noexcept;

/// See transfer_pixels. Error 516 for a mask (not carried out), a null composite mode and transfer
/// modes that make_compositing does not know. The field is not looked at: whole frames only.
PF_Err transfer_rect(const char *name, PF_ModeFlags flags, const PF_LRect *src_rect,
                     const PF_EffectWorld *src, const PF_CompositeMode *mode,
                     const PF_MaskWorld *mask, A_long x, A_long y,
                     const PF_EffectWorld *dst) noexcept;

/// What transform_world is asked to do.
struct TransformRequest {
    PF_Quality quality;
    PF_ModeFlags flags;
    const PF_EffectWorld *src;
    const PF_CompositeMode *mode;
    const PF_MaskWorld *mask;
    const PF_FloatMatrix *matrices;
    A_long matrix_count;
    bool source_to_destination;
    const PF_LRect *dst_rect;  ///< null is the whole destination
    const PF_EffectWorld *dst;
};

/// See transform_pixels: bilinear at high quality, else nearest. A matrix that cannot be inverted
/// or is not finite draws nothing and succeeds. Error 516 as for transfer_rect, and for any number
/// of matrices but one (no motion blur).
PF_Err transform_world(const char *name, const TransformRequest &request) noexcept;

}  // namespace stage::calls
