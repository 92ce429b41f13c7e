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

template <class Colour>
PF_Err fill_as(const char *name, const Colour *colour, const PF_LRect *rect,
               const PF_EffectWorld *world) noexcept {
    return code_call(
        name,
        [&](HostCall &call) { call.arguments(describe_world(world) + " " + describe_rect(rect)); },
        [&](HostCall &call) -> PF_Err {
            PixelView view;
            if (!view_of(call, world, "world", view)) return PF_Err_BAD_CALLBACK_PARAM;
            fill_pixels(view, box_of(rect, view), colour == nullptr ? Colour{} : *colour);
            return PF_Err_NONE;
        });
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

PF_Err copy(const char *name, CopyQuality quality, const PF_EffectWorld *src,
            const PF_EffectWorld *dst, const PF_LRect *src_rect,
            const PF_LRect *dst_rect) noexcept {
    return code_call(
        name,
        [&](HostCall &call) {
            call.arguments(describe_world(src) + " " + describe_rect(src_rect) + " to " +
                           describe_world(dst) + " " + describe_rect(dst_rect));
        },
        [&](HostCall &call) -> PF_Err {
            PixelView from, to;
            if (!views_of(call, src, dst, from, to)) return PF_Err_BAD_CALLBACK_PARAM;
            copy_pixels(from, box_of(src_rect, from), to, box_of(dst_rect, to),
                        quality == CopyQuality::kHigh ? Sampling::kBilinear
                                                      : sampling_of_command(call.host()));
            return PF_Err_NONE;
        });
}

PF_Err fill(const char *name, const PF_Pixel *colour, const PF_LRect *rect,
            const PF_EffectWorld *world) noexcept {
    return fill_as(name, colour, rect, world);
}

PF_Err fill16(const char *name, const PF_Pixel16 *colour, const PF_LRect *rect,
              const PF_EffectWorld *world) noexcept {
    return fill_as(name, colour, rect, world);
}

PF_Err transfer_rect(const char *name, PF_ModeFlags flags, const PF_LRect *src_rect,
                     const PF_EffectWorld *src, const PF_CompositeMode *mode,
                     const PF_MaskWorld *mask, A_long x, A_long y,
                     const PF_EffectWorld *dst) noexcept {
    return code_call(
        name,
        [&](HostCall &call) {
            call.arguments(describe_world(src) + " " + describe_rect(src_rect) + " at (" +
                           std::to_string(x) + "," + std::to_string(y) + ") of " +
                           describe_world(dst) + ", " + describe_mode(mode));
        },
        [&](HostCall &call) -> PF_Err {
            PixelView from, to;
            if (!views_of(call, src, dst, from, to) || mode == nullptr || mask != nullptr) {
                return PF_Err_BAD_CALLBACK_PARAM;
            }
            const auto how = make_compositing(*mode, flags, from.depth);
            if (!how) return PF_Err_BAD_CALLBACK_PARAM;
            transfer_pixels(from, box_of(src_rect, from), to, x, y, *how);
            return PF_Err_NONE;
        });
}

PF_Err transform_world(const char *name, const TransformRequest &request) noexcept {
    return code_call(
        name,
        [&](HostCall &call) {
            call.arguments(describe_world(request.src) + " to " + describe_world(request.dst) +
                           " " + describe_rect(request.dst_rect) + ", " +
                           describe_mode(request.mode));
        },
        [&](HostCall &call) -> PF_Err {
            PixelView from, to;
            if (!views_of(call, request.src, request.dst, from, to) || request.mode == nullptr ||
                request.mask != nullptr || request.matrices == nullptr ||
                request.matrix_count != 1) {
                return PF_Err_BAD_CALLBACK_PARAM;
            }
            const auto how = make_compositing(*request.mode, request.flags, from.depth);
            if (!how) return PF_Err_BAD_CALLBACK_PARAM;
            const auto matrix =
                destination_to_source(request.matrices[0], request.source_to_destination);
            if (!matrix) return PF_Err_NONE;
            in_bands(
                call.host().options.schedule, intersect(box_of(request.dst_rect, to), bounds(to)),
                request.src->data != request.dst->data, [&](const Box &band) {
                    transform_pixels(from, to, band, *matrix, *how, sampling_for(request.quality));
                });
            return PF_Err_NONE;
        });
}

}  // namespace stage::calls
