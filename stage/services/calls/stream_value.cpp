#include "stage/services/calls/stream_value.h"

#include "hostapi/constants.h"
#include "stage/effect/param_catalog.h"
#include "stage/host/host.h"

namespace stage {
namespace {

using Kind = StreamTarget::Kind;

struct ParamStreamType {
    PF_ParamType param;
    AEGP_StreamType stream;
};

/// Parameter types without a row carry no stream data.
constexpr ParamStreamType kParamStreamTypes[] = {
    {PF_Param_LAYER, AEGP_StreamType_LAYER_ID},     {PF_Param_SLIDER, AEGP_StreamType_OneD},
    {PF_Param_FIX_SLIDER, AEGP_StreamType_OneD},    {PF_Param_ANGLE, AEGP_StreamType_OneD},
    {PF_Param_CHECKBOX, AEGP_StreamType_OneD},      {PF_Param_COLOR, AEGP_StreamType_COLOR},
    {PF_Param_POINT, AEGP_StreamType_TwoD_SPATIAL}, {PF_Param_POPUP, AEGP_StreamType_OneD},
    {PF_Param_FLOAT_SLIDER, AEGP_StreamType_OneD},
};

AEGP_StreamType param_stream_type(PF_ParamType type) {
    for (const ParamStreamType &row : kParamStreamTypes) {
        if (row.param == type) return row.stream;
    }
    return AEGP_StreamType_NO_DATA;
}

AEGP_ColorVal color_value(const std::array<std::uint8_t, 4> &argb) {
    return {argb[0] / 255.0, argb[1] / 255.0, argb[2] / 255.0, argb[3] / 255.0};
}

bool param_value(Host &host, const StreamTarget &target, AEGP_StreamVal2 *result) {
    const ParamValue &value =
        effect_of(host, target.owner)->streams[static_cast<std::size_t>(target.param)].value;
    switch (stream_type(host, target)) {
        case AEGP_StreamType_LAYER_ID:
            result->layer_id = value.layer;
            return true;
        case AEGP_StreamType_COLOR:
            result->color = color_value(value.color);
            return true;
        case AEGP_StreamType_TwoD_SPATIAL:
            result->two_d = {value.x, value.y};
            return true;
        default:
            result->one_d = value.number;
            return true;
    }
}

}  // namespace

EffectState *effect_of(Host &host, const EffectTarget &target) {
    Layer *layer = host.project.layer(target.layer);
    const auto index = static_cast<std::size_t>(target.effect);
    if (layer == nullptr || target.effect < 0 || index >= layer->effects.size()) return nullptr;
    return &layer->effects[index];
}

AEGP_StreamType stream_type(Host &host, const StreamTarget &target) {
    if (target.kind != Kind::kEffectParam) {
        if (host.project.layer(target.owner.layer) == nullptr) return AEGP_StreamType_NO_DATA;
        if (target.kind == Kind::kPosition) return AEGP_StreamType_TwoD_SPATIAL;
        return target.kind == Kind::kScale ? AEGP_StreamType_TwoD : AEGP_StreamType_OneD;
    }
    const EffectState *effect = effect_of(host, target.owner);
    if (effect == nullptr || host.catalog == nullptr) return AEGP_StreamType_NO_DATA;
    const auto index = static_cast<std::size_t>(target.param);
    if (index >= effect->streams.size() || target.param >= host.catalog->count()) {
        return AEGP_StreamType_NO_DATA;
    }
    return param_stream_type(host.catalog->at(target.param).def.param_type);
}

bool stream_value(Host &host, const StreamTarget &target, AEGP_StreamVal2 *value) {
    if (stream_type(host, target) == AEGP_StreamType_NO_DATA) return false;
    if (target.kind == Kind::kEffectParam) return param_value(host, target, value);
    const Layer &layer = *host.project.layer(target.owner.layer);
    if (target.kind == Kind::kPosition) {
        value->two_d = {layer.position_x, layer.position_y};
    } else if (target.kind == Kind::kScale) {
        value->two_d = {layer.scale, layer.scale};
    } else {
        value->one_d = layer.opacity;
    }
    return true;
}

std::string stream_name(Host &host, const StreamTarget &target) {
    switch (target.kind) {
        case Kind::kPosition:
            return "Position";
        case Kind::kScale:
            return "Scale";
        case Kind::kOpacity:
            return "Opacity";
        case Kind::kEffectParam:
            break;
    }
    if (host.catalog == nullptr || target.param >= host.catalog->count()) return "";
    return host.catalog->at(target.param).name;
}

}  // namespace stage
