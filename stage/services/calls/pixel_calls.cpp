#include "stage/services/calls/pixel_calls.h"

#include <algorithm>

#include "stage/host/active_command.h"
#include "stage/host/schedule.h"
#include "stage/pixels/copy_pixels.h"
#include "stage/pixels/fill_pixels.h"
#include "stage/pixels/transfer_pixels.h"
#include "stage/pixels/transform_pixels.h"
#include "stage/services/calls/world_access.h"

namespace stage::calls {
namespace {

Sampling sampling_for(PF_Quality quality) {
    return quality == PF_Quality_HI ? Sampling::kBilinear : Sampling::kNearest;
}

Sampling sampling_of_command(const Host &host) {
    const ActiveCommand *active = host.active;
    if (active == nullptr || active->in_data == nullptr) return Sampling::kBilinear;
    return sampling_for(active->in_data->quality);
}

PF_Err copy_with(HostCall &call, Sampling sampling, const PF_EffectWorld *src,
                 const PF_EffectWorld *dst, const PF_Rect *src_rect, const PF_Rect *dst_rect) {
    PixelView from, to;
    if (!views_of(call, src, dst, from, to)) return PF_Err_BAD_CALLBACK_PARAM;
    copy_pixels(from, box_of(src_rect, from), to, box_of(dst_rect, to), sampling);
    return PF_Err_NONE;
}

/// Rows of one share of a transform: enough that handing it to a thread is worth it.
constexpr std::int64_t kBandRows = 64;

/// Calls `draw` for bands of `area`, on the schedule's threads when it has real ones and when
/// `apart` says that no band reads what another writes.
template <class Draw>
void in_bands(const Schedule &schedule, const Box &area, bool apart, Draw &&draw) {
    const bool threads = schedule.kind == Schedule::Kind::kThreads && schedule.threads > 1;
    if (!threads || !apart || area.empty() || area.height() <= kBandRows) return draw(area);
    const std::int64_t bands = (area.height() + kBandRows - 1) / kBandRows;
    run_scheduled(Schedule::with_threads(schedule.threads), bands, [&](int, std::int64_t i) {
        Box band = area;
        band.top = area.top + i * kBandRows;
        band.bottom = std::min(area.bottom, band.top + kBandRows);
        draw(band);
        return PF_Err_NONE;
    });
}

std::string describe_mode(const PF_CompositeMode *mode) {
    if (mode == nullptr) return "null";
    return "mode " + std::to_string(mode->xfer) + " opacity " + std::to_string(mode->opacity) +
           "/" + std::to_string(mode->opacitySu);
}

}  // namespace

PF_Err copy(HostCall &call, PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
            PF_Rect *dst_rect) {
    return copy_with(call, sampling_of_command(call.host()), src, dst, src_rect, dst_rect);
}

PF_Err copy_hq(HostCall &call, PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst,
               PF_Rect *src_rect, PF_Rect *dst_rect) {
    return copy_with(call, Sampling::kBilinear, src, dst, src_rect, dst_rect);
}

std::string describe_copy(PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
                          PF_Rect *dst_rect) {
    return describe_world(src) + " " + describe_rect(src_rect) + " to " + describe_world(dst) +
           " " + describe_rect(dst_rect);
}

template <class Colour>
PF_Err fill(HostCall &call, PF_ProgPtr, const Colour *colour, const PF_Rect *rect,
            PF_EffectWorld *world) {
    PixelView view;
    if (!view_of(call, world, "world", view)) return PF_Err_BAD_CALLBACK_PARAM;
    fill_pixels(view, box_of(rect, view), colour == nullptr ? Colour{} : *colour);
    return PF_Err_NONE;
}

template <class Colour>
std::string describe_fill(PF_ProgPtr, const Colour *, const PF_Rect *rect, PF_EffectWorld *world) {
    return describe_world(world) + " " + describe_rect(rect);
}

#define KS_COLOUR(Colour)                                                           \
    template PF_Err fill(HostCall &, PF_ProgPtr, const Colour *, const PF_Rect *,   \
                         PF_EffectWorld *);                                         \
    template std::string describe_fill(PF_ProgPtr, const Colour *, const PF_Rect *, \
                                       PF_EffectWorld *);
KS_COLOUR(PF_Pixel)
KS_COLOUR(PF_Pixel16)
#undef KS_COLOUR

PF_Err transfer_rect(HostCall &call, PF_ProgPtr, PF_Quality, PF_ModeFlags flags, PF_Field,
                     const PF_Rect *src_rect, const PF_EffectWorld *src,
                     const PF_CompositeMode &mode, const PF_MaskWorld *mask, A_long x, A_long y,
                     PF_EffectWorld *dst) {
    PixelView from, to;
    if (!views_of(call, src, dst, from, to) || mask != nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const auto how = make_compositing(mode, flags, from.depth);
    if (!how) return PF_Err_BAD_CALLBACK_PARAM;
    transfer_pixels(from, box_of(src_rect, from), to, x, y, *how);
    return PF_Err_NONE;
}

std::string describe_transfer(PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                              const PF_Rect *src_rect, const PF_EffectWorld *src,
                              const PF_CompositeMode *mode, const PF_MaskWorld *, A_long x,
                              A_long y, PF_EffectWorld *dst) {
    return describe_world(src) + " " + describe_rect(src_rect) + " at (" + std::to_string(x) + "," +
           std::to_string(y) + ") of " + describe_world(dst) + ", " + describe_mode(mode);
}

PF_Err transform_world(HostCall &call, PF_ProgPtr, PF_Quality quality, PF_ModeFlags flags, PF_Field,
                       const PF_EffectWorld *src, const PF_CompositeMode &mode,
                       const PF_MaskWorld *mask, const PF_FloatMatrix &matrix, A_long count,
                       PF_Boolean source_to_destination, const PF_Rect *dst_rect,
                       PF_EffectWorld *dst) {
    PixelView from, to;
    if (!views_of(call, src, dst, from, to) || mask != nullptr || count != 1) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    const auto how = make_compositing(mode, flags, from.depth);
    if (!how) return PF_Err_BAD_CALLBACK_PARAM;
    const auto back = destination_to_source(matrix, source_to_destination != 0);
    if (!back) return PF_Err_NONE;
    in_bands(call.host().options.schedule, intersect(box_of(dst_rect, to), bounds(to)),
             src->data != dst->data, [&](const Box &band) {
                 transform_pixels(from, to, band, *back, *how, sampling_for(quality));
             });
    return PF_Err_NONE;
}

std::string describe_transform(PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_Field,
                               const PF_EffectWorld *src, const PF_CompositeMode *mode,
                               const PF_MaskWorld *, const PF_FloatMatrix *, A_long, PF_Boolean,
                               const PF_Rect *dst_rect, PF_EffectWorld *dst) {
    return describe_world(src) + " to " + describe_world(dst) + " " + describe_rect(dst_rect) +
           ", " + describe_mode(mode);
}

}  // namespace stage::calls
