#include "stage/services/event_callbacks.h"

#include <cmath>
#include <limits>
#include <string>

#include "hostapi/constants.h"
#include "stage/host/call_table.h"

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

/// One conversion: kConvert changes pixels in place and returns a code.
using Conversion = PF_Err(const EventConversion &by, double &x, double &y);
template <Conversion kConvert>
PF_Err convert_point(HostCall &call, void *refcon, PF_ContextH context, PF_FixedPoint *point) {
    const auto *conversion = static_cast<const EventConversion *>(refcon);
    if (conversion == nullptr || conversion->context != context || point == nullptr) {
        call.report("event.context",
                    std::string(call.name()) + " without this event's context and refcon");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    double x = point->x / kFixedOne;
    double y = point->y / kFixedOne;
    const PF_Err error = kConvert(*conversion, x, y);
    if (error == 0) *point = {to_fixed(x), to_fixed(y)};
    return error;
}
std::string describe_point(void *, PF_ContextH, PF_FixedPoint *point) {
    return point != nullptr ? describe(*point) : "";
}

/// The same at a time, which makes no difference: nothing here moves.
template <Conversion kConvert>
PF_Err convert_at(HostCall &call, void *refcon, PF_ContextH context, A_long, A_long,
                  PF_FixedPoint *point) {
    return convert_point<kConvert>(call, refcon, context, point);
}
std::string describe_at(void *, PF_ContextH, A_long, A_long, PF_FixedPoint *point) {
    return point != nullptr ? describe(*point) : "";
}

PF_Err layer_to_comp(const EventConversion &by, double &x, double &y) {
    x = by.layer.comp_x(x);
    y = by.layer.comp_y(y);
    return PF_Err_NONE;
}

PF_Err comp_to_layer(const EventConversion &by, double &x, double &y) {
    if (!by.layer.invertible()) return A_Err_PARAMETER;
    x = by.layer.layer_x(x);
    y = by.layer.layer_y(y);
    return PF_Err_NONE;
}

PF_Err source_to_frame(const EventConversion &by, double &x, double &y) {
    x = by.viewport.window_x(x);
    y = by.viewport.window_y(y);
    return PF_Err_NONE;
}

PF_Err frame_to_source(const EventConversion &by, double &x, double &y) {
    x = by.viewport.source_x(x);
    y = by.viewport.source_y(y);
    return PF_Err_NONE;
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

PF_Err get_comp2layer_xform(HostCall &, void *refcon, PF_ContextH, A_long, A_long, A_long &exists,
                            PF_FloatMatrix &matrix) {
    if (refcon == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const LayerMap &map = static_cast<EventConversion *>(refcon)->layer;
    exists = map.invertible() ? 1 : 0;
    if (map.invertible()) {
        matrix = matrix_of(1 / map.scale_x, 1 / map.scale_y, map.layer_x(0), map.layer_y(0));
    }
    return PF_Err_NONE;
}

PF_Err get_layer2comp_xform(HostCall &, void *refcon, PF_ContextH, A_long, A_long,
                            PF_FloatMatrix &matrix) {
    if (refcon == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const LayerMap &map = static_cast<EventConversion *>(refcon)->layer;
    matrix = matrix_of(map.scale_x, map.scale_y, map.comp_x(0), map.comp_y(0));
    return PF_Err_NONE;
}

PF_Err info_draw_color(HostCall &, void *, PF_Pixel) {
    return PF_Err_NONE;
}

PF_Err info_draw_text(HostCall &, void *, const A_char *, const A_char *) {
    return PF_Err_NONE;
}
std::string describe_text(void *, const A_char *first, const A_char *second) {
    return std::string(first != nullptr ? first : "") + "; " + (second != nullptr ? second : "");
}

constexpr auto make_table() {
    CallTable<PF_EventCallbacks, "event"> table;
    KS_SERVE(layer_to_comp, convert_at<layer_to_comp>, describe_at);
    KS_SERVE(comp_to_layer, convert_at<comp_to_layer>, describe_at);
    KS_SERVE(get_comp2layer_xform, get_comp2layer_xform);
    KS_SERVE(get_layer2comp_xform, get_layer2comp_xform);
    KS_SERVE(source_to_frame, convert_point<source_to_frame>, describe_point);
    KS_SERVE(frame_to_source, convert_point<frame_to_source>, describe_point);
    KS_SERVE(info_draw_color, info_draw_color);
    KS_SERVE(info_draw_text, info_draw_text, describe_text);
    return table;
}

}  // namespace

PF_EventCallbacks event_callbacks(EventConversion &conversion) {
    static constexpr auto kTable = make_table();
    PF_EventCallbacks callbacks = kTable.get();
    callbacks.refcon = &conversion;
    return callbacks;
}

}  // namespace stage
