#include "render/compositing.h"

#include <algorithm>
#include <limits>

#include "host/host_world.h"

namespace ks {
namespace {

constexpr PF_Pixel kBackground{255, 30, 30, 30};

PF_CompositeMode over_mode(Opacity opacity) {
    PF_CompositeMode mode{};
    mode.xfer = PF_Xfer_IN_FRONT;
    mode.opacity = opacity.code8;
    mode.opacitySu = opacity.code16;
    return mode;
}

}  // namespace

Opacity opacity_from_fraction(double fraction) {
    const auto code = [fraction](double full_scale) {
        const int full = trunc_to_int(full_scale);
        return std::clamp(trunc_to_int(fraction * full_scale), 0, full);
    };
    return {static_cast<A_u_char>(code(255.0)), static_cast<A_u_short>(code(32768.0))};
}

PF_Err fill_background(const Frame &frame) {
    return frame.in_data->utils->fill(frame.in_data->effect_ref, &kBackground, nullptr,
                                      frame.output);
}

// Colours are straight everywhere, and whole frames are rendered whatever the field setting: the
// effect does not declare field independence.
PF_Err place_world(const Frame &frame, const PF_EffectWorld *source, const PF_Rect &rect,
                   IntPoint at, Opacity opacity, PF_EffectWorld *destination) {
    const PF_CompositeMode mode = over_mode(opacity);
    return frame.suites.world_transform().transfer_rect(
        frame.in_data->effect_ref, frame.in_data->quality, PF_MF_Alpha_STRAIGHT, PF_Field_FRAME,
        &rect, source, &mode, nullptr, at.x, at.y, destination);
}

PF_Err draw_scaled(const Frame &frame, const PF_EffectWorld *source, double scale, double left,
                   double top, PF_EffectWorld *destination) {
    if (!(scale > 0.0 && scale <= std::numeric_limits<double>::max())) return PF_Err_NONE;
    const double inverse = 1.0 / scale;
    PF_FloatMatrix matrix{};  // destination to source, row vectors: translation in the last row
    matrix.mat[0][0] = inverse;
    matrix.mat[1][1] = inverse;
    matrix.mat[2][0] = (0.0 - left) / scale;
    matrix.mat[2][1] = (0.0 - top) / scale;
    matrix.mat[2][2] = 1.0;
    const PF_CompositeMode mode = over_mode({});
    const PF_Rect area = full_rect(size_of(*destination));
    return frame.suites.world_transform().transform_world(
        frame.in_data->effect_ref, frame.in_data->quality, PF_MF_Alpha_STRAIGHT, PF_Field_FRAME,
        source, &mode, nullptr, &matrix, 1, PF_Boolean{0}, &area, destination);
}

}  // namespace ks
