#include "stage/services/event_callbacks.h"

#include <cmath>
#include <limits>
#include <string>

#include "hostapi/constants.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"

namespace stage {
namespace {

constexpr double kFixedOne = 65536.0;

PF_Fixed to_fixed(double pixels) {
    constexpr double kLeast = std::numeric_limits<PF_Fixed>::min();
    constexpr double kMost = std::numeric_limits<PF_Fixed>::max();
    const double scaled = std::nearbyint(pixels * kFixedOne);
    if (!(scaled > kLeast)) return std::numeric_limits<PF_Fixed>::min();  // NaN too
    return scaled < kMost ? static_cast<PF_Fixed>(scaled) : std::numeric_limits<PF_Fixed>::max();
}

std::string describe(const PF_FixedPoint &point) {
    return "(" + std::to_string(point.x / kFixedOne) + ", " + std::to_string(point.y / kFixedOne) +
           ")";
}

/// One conversion: `convert(conversion, x, y)` changes pixels in place and returns a code.
template <class Convert>
PF_Err convert_point(const char *name, void *refcon, PF_ContextH context, PF_FixedPoint *point,
                     Convert convert) {
    HostCall call(name);
    if (call.traced() && point != nullptr) call.arguments(describe(*point));
    if (call.must_fail()) return call.result(call.error());
    auto *conversion = static_cast<EventConversion *>(refcon);
    if (conversion == nullptr || conversion->context != context || point == nullptr) {
        call.host().strict.report("event.context", call.command(),
                                  std::string(name) + " without this event's context and refcon");
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    double x = point->x / kFixedOne;
    double y = point->y / kFixedOne;
    const PF_Err error = convert(*conversion, x, y);
    if (error == 0) *point = {to_fixed(x), to_fixed(y)};
    return call.result(error);
}

PF_Err layer_to_comp(void *refcon, PF_ContextH context, A_long, A_long, PF_FixedPoint *point) {
    return convert_point("event.layer_to_comp", refcon, context, point,
                         [](const EventConversion &by, double &x, double &y) -> PF_Err {
                             x = by.layer.comp_x(x);
                             y = by.layer.comp_y(y);
                             return PF_Err_NONE;
                         });
}

PF_Err comp_to_layer(void *refcon, PF_ContextH context, A_long, A_long, PF_FixedPoint *point) {
    return convert_point("event.comp_to_layer", refcon, context, point,
                         [](const EventConversion &by, double &x, double &y) -> PF_Err {
                             if (!by.layer.invertible()) return A_Err_PARAMETER;
                             x = by.layer.layer_x(x);
                             y = by.layer.layer_y(y);
                             return PF_Err_NONE;
                         });
}

PF_Err source_to_frame(void *refcon, PF_ContextH context, PF_FixedPoint *point) {
    return convert_point("event.source_to_frame", refcon, context, point,
                         [](const EventConversion &by, double &x, double &y) -> PF_Err {
                             x = by.viewport.window_x(x);
                             y = by.viewport.window_y(y);
                             return PF_Err_NONE;
                         });
}

PF_Err frame_to_source(void *refcon, PF_ContextH context, PF_FixedPoint *point) {
    return convert_point("event.frame_to_source", refcon, context, point,
                         [](const EventConversion &by, double &x, double &y) -> PF_Err {
                             x = by.viewport.source_x(x);
                             y = by.viewport.source_y(y);
                             return PF_Err_NONE;
                         });
}

/// Row-vector matrix of p -> (p - from) * scale + to.
PF_FloatMatrix matrix_of(double scale_x, double scale_y, double move_x, double move_y) {
    PF_FloatMatrix matrix{};
    matrix.mat[0][0] = scale_x;
    matrix.mat[1][1] = scale_y;
    matrix.mat[2][0] = move_x;
    matrix.mat[2][1] = move_y;
    matrix.mat[2][2] = 1;
    return matrix;
}

PF_Err get_comp2layer_xform(void *refcon, PF_ContextH, A_long, A_long, A_long *exists,
                            PF_FloatMatrix *matrix) {
    HostCall call("event.get_comp2layer_xform");
    if (call.must_fail()) return call.result(call.error());
    if (refcon == nullptr || exists == nullptr || matrix == nullptr) {
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    const LayerMap &map = static_cast<EventConversion *>(refcon)->layer;
    *exists = map.invertible() ? 1 : 0;
    if (map.invertible()) {
        *matrix = matrix_of(1 / map.scale_x, 1 / map.scale_y, map.layer_x(0), map.layer_y(0));
    }
    return call.result(PF_Err_NONE);
}

PF_Err get_layer2comp_xform(void *refcon, PF_ContextH, A_long, A_long, PF_FloatMatrix *matrix) {
    HostCall call("event.get_layer2comp_xform");
    if (call.must_fail()) return call.result(call.error());
    if (refcon == nullptr || matrix == nullptr) return call.result(PF_Err_BAD_CALLBACK_PARAM);
    const LayerMap &map = static_cast<EventConversion *>(refcon)->layer;
    *matrix = matrix_of(map.scale_x, map.scale_y, map.comp_x(0), map.comp_y(0));
    return call.result(PF_Err_NONE);
}

PF_Err info_draw_color(void *, PF_Pixel) {
    HostCall call("event.info_draw_color");
    return call.result(call.must_fail() ? call.error() : PF_Err{PF_Err_NONE});
}

PF_Err info_draw_text(void *, const A_char *first, const A_char *second) {
    HostCall call("event.info_draw_text");
    if (call.traced()) {
        call.arguments(std::string(first != nullptr ? first : "") + "; " +
                       (second != nullptr ? second : ""));
    }
    return call.result(call.must_fail() ? call.error() : PF_Err{PF_Err_NONE});
}

}  // namespace

PF_EventCallbacks event_callbacks(EventConversion &conversion) {
    return {&conversion,          layer_to_comp,        comp_to_layer,
            get_comp2layer_xform, get_layer2comp_xform, source_to_frame,
            frame_to_source,      info_draw_color,      info_draw_text};
}

}  // namespace stage
