// Running a plug-in's callback over pixels or numbers as the host's schedule says, shared by the
// iterate suites and the callback table.
#pragma once

#include <string>

#include "stage/host/call_table.h"

namespace stage::calls {

template <class Pixel>
using PixelFunction = PF_Err (*)(void *refcon, A_long x, A_long y, Pixel *in, Pixel *out);
using GenericFunction = A_Err (*)(void *refcon, A_long thread_index, A_long i, A_long iterations);

/// Calls `function` for each pixel of `area` that lies in both worlds; null area is their overlap,
/// null `src` means that `dst` is its own input. Coordinates are the worlds'. One row is the unit
/// that the schedule deals out; within a row x rises. Callbacks run under ThreadRole::kWorker, on
/// several threads at once when the schedule says so. The first non-zero result ends it and is
/// returned, 517 when the schedule's user cancels. `Pixel` must be that of the worlds' depth, else
/// error 516. For the three pixel types. [host thread]
template <class Pixel>
PF_Err iterate(HostCall &call, PF_InData *, A_long, A_long, PF_EffectWorld *src,
               const PF_Rect *area, void *refcon, PixelFunction<Pixel> function,
               PF_EffectWorld *dst);
template <class Pixel>
std::string describe_iterate(PF_InData *, A_long, A_long, PF_EffectWorld *src, const PF_Rect *area,
                             void *, PixelFunction<Pixel>, PF_EffectWorld *dst);

/// Calls `function` for i = 0..iterations-1, or once per processor of the schedule for
/// PF_Iterations_ONCE_PER_PROCESSOR (-1); its last argument is the real count. 0 does nothing;
/// other negative counts and a null function are error 3. [host thread]
A_Err iterate_generic(HostCall &call, A_long iterations, void *refcon, GenericFunction function);
std::string describe_iterations(A_long iterations, void *refcon, GenericFunction function);

}  // namespace stage::calls
