#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/pixel_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

PF_Err copy(PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
            PF_Rect *dst_rect) noexcept {
    return calls::copy("PF World Transform Suite.copy", calls::CopyQuality::kOfCommand, src, dst,
                       src_rect, dst_rect);
}

PF_Err copy_hq(PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
               PF_Rect *dst_rect) noexcept {
    return calls::copy("PF World Transform Suite.copy_hq", calls::CopyQuality::kHigh, src, dst,
                       src_rect, dst_rect);
}

PF_Err transfer_rect(PF_ProgPtr, PF_Quality, PF_ModeFlags flags, PF_Field, const PF_Rect *src_rect,
                     const PF_EffectWorld *src, const PF_CompositeMode *mode,
                     const PF_MaskWorld *mask, A_long x, A_long y, PF_EffectWorld *dst) noexcept {
    return calls::transfer_rect("PF World Transform Suite.transfer_rect", flags, src_rect, src,
                                mode, mask, x, y, dst);
}

PF_Err transform_world(PF_ProgPtr, PF_Quality quality, PF_ModeFlags flags, PF_Field,
                       const PF_EffectWorld *src, const PF_CompositeMode *mode,
                       const PF_MaskWorld *mask, const PF_FloatMatrix *matrices, A_long count,
                       PF_Boolean src2dst, const PF_Rect *dst_rect, PF_EffectWorld *dst) noexcept {
    return calls::transform_world(
        "PF World Transform Suite.transform_world",
        {quality, flags, src, mode, mask, matrices, count, src2dst != 0, dst_rect, dst});
}

constexpr PF_WorldTransformSuite1 kWorldTransformSuite{
    .composite_rect = unimplemented<"PF World Transform Suite.composite_rect">,
    .blend = unimplemented<"PF World Transform Suite.blend">,
    .convolve = unimplemented<"PF World Transform Suite.convolve">,
    .copy = copy,
    .copy_hq = copy_hq,
    .transfer_rect = transfer_rect,
    .transform_world = transform_world,
};

}  // namespace

void add_world_transform_suite(SuiteRegistry &suites) {
    suites.add(kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1, &kWorldTransformSuite);
}

}  // namespace stage
