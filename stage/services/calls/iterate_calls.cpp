#include "stage/services/calls/iterate_calls.h"

#include "stage/host/host.h"
#include "stage/host/schedule.h"
#include "stage/services/calls/world_access.h"

namespace stage::calls {
namespace {

template <class Pixel>
constexpr Depth kDepthOf = Depth::U8;
template <>
constexpr Depth kDepthOf<PF_Pixel16> = Depth::U16;
template <>
constexpr Depth kDepthOf<PF_PixelFloat> = Depth::Float;

}  // namespace

template <class Pixel>
PF_Err iterate(HostCall &call, PF_InData *, A_long, A_long, PF_EffectWorld *src,
               const PF_Rect *area, void *refcon, PixelFunction<Pixel> function,
               PF_EffectWorld *dst) {
    PixelView from, to;
    if (!views_of(call, src == nullptr ? dst : src, dst, from, to) || to.depth != kDepthOf<Pixel> ||
        function == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    const Box overlap = intersect(bounds(from), bounds(to));
    const Box box = area == nullptr ? overlap : intersect(overlap, box_of(area, to));
    if (box.empty()) return PF_Err_NONE;
    const auto row = [&](int, std::int64_t i) -> PF_Err {
        const auto y = static_cast<int>(box.top + i);
        Pixel *in = from.row<Pixel>(y), *out = to.row<Pixel>(y);
        const auto left = static_cast<A_long>(box.left);
        const auto right = static_cast<A_long>(box.right);
        for (A_long x = left; x < right; ++x) {
            if (const PF_Err error = function(refcon, x, y, in + x, out + x)) return error;
        }
        return PF_Err_NONE;
    };
    return run_scheduled(call.host().options.schedule, box.height(), row);
}

template <class Pixel>
std::string describe_iterate(PF_InData *, A_long, A_long, PF_EffectWorld *src, const PF_Rect *area,
                             void *, PixelFunction<Pixel>, PF_EffectWorld *dst) {
    return describe_world(src) + " to " + describe_world(dst) + " " + describe_rect(area);
}

#define KS_PIXEL(Pixel)                                                                       \
    template PF_Err iterate(HostCall &, PF_InData *, A_long, A_long, PF_EffectWorld *,        \
                            const PF_Rect *, void *, PixelFunction<Pixel>, PF_EffectWorld *); \
    template std::string describe_iterate(PF_InData *, A_long, A_long, PF_EffectWorld *,      \
                                          const PF_Rect *, void *, PixelFunction<Pixel>,      \
                                          PF_EffectWorld *);
KS_PIXEL(PF_Pixel)
KS_PIXEL(PF_Pixel16)
KS_PIXEL(PF_PixelFloat)
#undef KS_PIXEL

A_Err iterate_generic(HostCall &call, A_long iterations, void *refcon, GenericFunction function) {
    const Schedule &schedule = call.host().options.schedule;
    const A_long count =
        iterations == PF_Iterations_ONCE_PER_PROCESSOR ? reported_threads(schedule) : iterations;
    if (count < 0 || function == nullptr) return A_Err_PARAMETER;
    return run_scheduled(schedule, count, [&](int thread, std::int64_t i) {
        return function(refcon, thread, static_cast<A_long>(i), count);
    });
}

std::string describe_iterations(A_long iterations, void *, GenericFunction) {
    return std::to_string(iterations);
}

}  // namespace stage::calls
