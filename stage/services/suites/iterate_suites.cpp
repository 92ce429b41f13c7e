// "PF Iterate8 Suite", "PF iterate16 Suite", "PF iterateFloat Suite", numbers 1 and 2 of each.
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

template <CallName kName, class Pixel>
PF_Err iterate(PF_InData *, A_long, A_long, PF_EffectWorld *src, const PF_Rect *area, void *refcon,
               calls::PixelFunction<Pixel> function, PF_EffectWorld *dst) noexcept {
    return calls::iterate<Pixel>(kName.text, src, area, refcon, function, dst);
}

// Numbers 1 and 2 have the same slots.
template <class Suite>
constexpr Suite kIterate8{
    .iterate = iterate<"PF Iterate8 Suite.iterate", PF_Pixel>,
    .iterate_origin = unimplemented<"PF Iterate8 Suite.iterate_origin">,
    .iterate_lut = unimplemented<"PF Iterate8 Suite.iterate_lut">,
    .iterate_origin_non_clip_src = unimplemented<"PF Iterate8 Suite.iterate_origin_non_clip_src">,
    .iterate_generic = [](A_long iterations, void *refcon,
                          calls::GenericFunction function) noexcept -> PF_Err {
        return calls::iterate_generic("PF Iterate8 Suite.iterate_generic", iterations, refcon,
                                      function);
    },
};

template <class Suite>
constexpr Suite kIterate16{
    .iterate = iterate<"PF iterate16 Suite.iterate", PF_Pixel16>,
    .iterate_origin = unimplemented<"PF iterate16 Suite.iterate_origin">,
    .iterate_origin_non_clip_src = unimplemented<"PF iterate16 Suite.iterate_origin_non_clip_src">,
};

template <class Suite>
constexpr Suite kIterateFloat{
    .iterate = iterate<"PF iterateFloat Suite.iterate", PF_PixelFloat>,
    .iterate_origin = unimplemented<"PF iterateFloat Suite.iterate_origin">,
    .iterate_origin_non_clip_src =
        unimplemented<"PF iterateFloat Suite.iterate_origin_non_clip_src">,
};

}  // namespace

void add_iterate_suites(SuiteRegistry &suites) {
    suites.add(kPFIterate8Suite, kPFIterate8SuiteVersion1, &kIterate8<PF_Iterate8Suite1>);
    suites.add(kPFIterate8Suite, kPFIterate8SuiteVersion2, &kIterate8<PF_Iterate8Suite2>);
    suites.add(kPFIterate16Suite, kPFIterate16SuiteVersion1, &kIterate16<PF_iterate16Suite1>);
    suites.add(kPFIterate16Suite, kPFIterate16SuiteVersion2, &kIterate16<PF_iterate16Suite2>);
    suites.add(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1,
               &kIterateFloat<PF_iterateFloatSuite1>);
    suites.add(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion2,
               &kIterateFloat<PF_iterateFloatSuite2>);
}

}  // namespace stage
