// Running a plug-in's callback over pixels or numbers as the host's schedule says, shared by the
// iterate suites and the callback table.
#pragma once

#include "hostapi/effect_types.h"

namespace stage::calls {

template <class Pixel>
using PixelFunction = PF_Err (*)(void *refcon, A_long x, A_long y, Pixel *in, Pixel *out);
using GenericFunction = A_Err (*)(void *refcon, A_long thread_index, A_long i, A_long iterations);

/// Calls `function` for each pixel of `area` that lies in both worlds; null area is their overlap,
/// null `src` means that `dst` is its own input. Coordinates are the worlds'. One row is the unit
/// that the schedule deals out; within a row x rises. Callbacks run under ThreadRole::kWorker, on
/// several threads at once when the schedule says so. The first non-zero result ends it and is
/// returned, 517 when the schedule's user cancels. `Pixel` must be that of the worlds' depth, else
/// error 516. [host thread]
template <class Pixel>
PF_Err iterate(const char *name, const PF_EffectWorld *src, const PF_LRect *area, void *refcon,
               PixelFunction<Pixel> function, const PF_EffectWorld *dst) noexcept;

extern template PF_Err iterate(const char *, const PF_EffectWorld *, const PF_LRect *, void *,
                               PixelFunction<PF_Pixel>, const PF_EffectWorld *) noexcept;
extern template PF_Err iterate(const char *, const PF_EffectWorld *, const PF_LRect *, void *,
                               PixelFunction<PF_Pixel16>, const PF_EffectWorld *) noexcept;
extern template PF_Err iterate(const char *, const PF_EffectWorld *, const PF_LRect *, void *,
                               PixelFunction<PF_PixelFloat>, const PF_EffectWorld *) noexcept;

/// Calls `function` for i = 0..iterations-1, or once per processor of the schedule for
/// PF_Iterations_ONCE_PER_PROCESSOR (-1); its last argument is the real count. 0 does nothing;
/// other negative counts and a null function are error 3. [host thread]
A_Err iterate_generic(const char *name, A_long iterations, void *refcon,
                      GenericFunction function) noexcept;

}  // namespace stage::calls
