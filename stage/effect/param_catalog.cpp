#include "stage/effect/param_catalog.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "hostapi/constants.h"

namespace stage {
namespace {

constexpr double kFixedOne = 65536.0;

std::vector<std::string> split_choices(const std::string &text) {
    std::vector<std::string> choices;
    std::size_t begin = 0;
    while (true) {
        const std::size_t bar = text.find('|', begin);
        choices.push_back(text.substr(begin, bar - begin));
        if (bar == std::string::npos) return choices;
        begin = bar + 1;
    }
}

[[noreturn]] void refuse(const ParamInfo &info, int index, const std::string &why) {
    throw std::runtime_error("parameter " + std::to_string(index) + " \"" + info.name +
                             "\": " + why);
}

void copy_texts(ParamInfo &info) {
    PF_ParamDef &def = info.def;
    if (def.param_type == PF_Param_CHECKBOX && def.u.bd.u.nameptr != nullptr) {
        info.text = def.u.bd.u.nameptr;
        def.u.bd.u.nameptr = info.text.c_str();
    }
    if (def.param_type == PF_Param_POPUP && def.u.pd.u.namesptr != nullptr) {
        info.text = def.u.pd.u.namesptr;
        def.u.pd.u.namesptr = info.text.c_str();
        info.choices = split_choices(info.text);
    }
}

void check_definition(const ParamInfo &info, int index) {
    const PF_ParamDef &def = info.def;
    switch (def.param_type) {
        case PF_Param_POPUP:
            if (static_cast<std::size_t>(def.u.pd.num_choices) != info.choices.size()) {
                refuse(info, index, "the count of choices does not match the choices");
            }
            if (def.u.pd.dephault < 1 || def.u.pd.dephault > def.u.pd.num_choices) {
                refuse(info, index, "the default is no choice");
            }
            break;
        case PF_Param_CHECKBOX:
            if (def.u.bd.u.nameptr == nullptr) refuse(info, index, "the label is null");
            break;
        case PF_Param_FLOAT_SLIDER: {
            const PF_FloatSliderDef &slider = def.u.fs_d;
            if (!(slider.valid_min < slider.valid_max)) refuse(info, index, "dead range");
            if (slider.dephault < slider.valid_min || slider.dephault > slider.valid_max) {
                refuse(info, index, "the default lies outside the valid range");
            }
            break;
        }
        case PF_Param_POINT: {
            const PF_PointDef &point = def.u.td;
            const auto inside = [](PF_Fixed percent) {
                return percent >= 0 && percent <= 100 * 65536;
            };
            if (point.restrict_bounds && !(inside(point.x_dephault) && inside(point.y_dephault))) {
                refuse(info, index, "the default lies outside the bounds it asks for");
            }
            break;
        }
        default:
            break;
    }
}

PF_Fixed to_fixed(double pixels) {
    const double scaled = std::nearbyint(pixels * kFixedOne);
    if (std::isnan(scaled)) return 0;
    return static_cast<PF_Fixed>(std::clamp(scaled, -2147483648.0, 2147483647.0));
}

}  // namespace

bool ParamInfo::is_separator(int choice) const {
    return choices.at(static_cast<std::size_t>(choice - 1)) == "(-";
}

bool ParamCatalog::has_value(const PF_ParamDef &def) {
    return def.param_type != PF_Param_GROUP_START && def.param_type != PF_Param_GROUP_END;
}

ParamLook look_of(const PF_ParamDef &def) {
    ParamLook look;
    look.ui_flags = def.ui_flags;
    look.flags = def.flags;
    look.name.assign(def.name, ::strnlen(def.name, sizeof def.name));
    if (def.param_type == PF_Param_FLOAT_SLIDER) {
        const PF_FloatSliderDef &slider = def.u.fs_d;
        look.slider_min = slider.slider_min;
        look.slider_max = slider.slider_max;
        look.precision = slider.precision;
        look.display_flags = slider.display_flags;
    }
    return look;
}

void put_look(const ParamLook &look, PF_ParamDef &def) {
    def.ui_flags = look.ui_flags;
    def.flags = look.flags;
    std::memset(def.name, 0, sizeof def.name);
    std::memcpy(def.name, look.name.data(), std::min(look.name.size(), sizeof def.name - 1));
    if (def.param_type != PF_Param_FLOAT_SLIDER) return;
    PF_FloatSliderDef &slider = def.u.fs_d;
    slider.slider_min = look.slider_min;
    slider.slider_max = look.slider_max;
    slider.precision = look.precision;
    slider.display_flags = look.display_flags;
}

ParamCatalog::ParamCatalog() {
    auto input = std::make_unique<ParamInfo>();
    input->def.param_type = PF_Param_LAYER;
    params_.push_back(std::move(input));
    looks_.emplace_back();
}

std::string ParamCatalog::group_path() const {
    std::string path;
    for (const std::string &group : groups_) path += group + "/";
    return path;
}

void ParamCatalog::append(const PF_ParamDef &def) {
    auto info = std::make_unique<ParamInfo>();
    info->def = def;
    info->id = def.uu.id;
    const int index = count();
    if (std::memchr(def.name, 0, sizeof def.name) == nullptr) {
        refuse(*info, index, "the name has no terminator");
    }
    info->name = def.name;
    copy_texts(*info);
    check_definition(*info, index);
    if (info->id != 0) {
        for (const auto &other : params_) {
            if (other->id == info->id) refuse(*info, index, "its id is taken");
        }
    }
    if (def.param_type == PF_Param_GROUP_END) {
        if (groups_.empty()) refuse(*info, index, "a group ends that did not start");
        groups_.pop_back();
    } else {
        info->path = group_path() + info->name;
        if (def.param_type == PF_Param_GROUP_START) groups_.push_back(info->name);
    }
    info->def.uu.id = 0;  // from here on these bytes are change flags
    looks_.push_back(look_of(def));
    params_.push_back(std::move(info));
}

ParamValue ParamCatalog::initial_value(int index, int width, int height) const {
    const PF_ParamDef &def = at(index).def;
    ParamValue value = load_value(def, {1, 1});
    if (def.param_type == PF_Param_POINT) {
        const auto pixels = [](PF_Fixed percent, int size) {
            return std::nearbyint(percent / 100.0 * size) / kFixedOne;
        };
        value.x = pixels(def.u.td.x_dephault, width);
        value.y = pixels(def.u.td.y_dephault, height);
    }
    return value;
}

ParamValue ParamCatalog::clamped(int index, const ParamValue &value) const {
    const PF_ParamDef &def = at(index).def;
    ParamValue result = value;
    switch (def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            if (std::isnan(value.number)) {
                result.number = def.u.fs_d.valid_min;
            } else {
                result.number = std::clamp(value.number, double{def.u.fs_d.valid_min},
                                           double{def.u.fs_d.valid_max});
            }
            break;
        case PF_Param_POPUP:
            result.number = std::clamp(value.number, 1.0, double(def.u.pd.num_choices));
            break;
        case PF_Param_CHECKBOX:
            result.number = value.number != 0 ? 1 : 0;
            break;
        default:
            break;
    }
    return result;
}

const char *param_type_name(PF_ParamType type) {
    switch (type) {
        case PF_Param_LAYER:
            return "layer";
        case PF_Param_SLIDER:
            return "slider";
        case PF_Param_CHECKBOX:
            return "checkbox";
        case PF_Param_COLOR:
            return "colour";
        case PF_Param_POINT:
            return "point";
        case PF_Param_POPUP:
            return "popup";
        case PF_Param_FLOAT_SLIDER:
            return "float slider";
        case PF_Param_GROUP_START:
            return "group start";
        case PF_Param_GROUP_END:
            return "group end";
        default:
            return "other";
    }
}

void store_value(PF_ParamDef &def, const ParamValue &value, PointScale scale) {
    switch (def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            def.u.fs_d.value = value.number;
            break;
        case PF_Param_POPUP:
            def.u.pd.value = static_cast<PF_ParamValue>(value.number);
            break;
        case PF_Param_CHECKBOX:
            def.u.bd.value = static_cast<PF_ParamValue>(value.number);
            break;
        case PF_Param_COLOR:
            def.u.cd.value = {value.color[0], value.color[1], value.color[2], value.color[3]};
            break;
        case PF_Param_POINT:
            def.u.td.x_value = to_fixed(value.x * scale.x);
            def.u.td.y_value = to_fixed(value.y * scale.y);
            break;
        default:
            break;
    }
}

ParamValue load_value(const PF_ParamDef &def, PointScale scale) {
    ParamValue value;
    switch (def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            value.number = def.u.fs_d.value;
            break;
        case PF_Param_POPUP:
            value.number = def.u.pd.value;
            break;
        case PF_Param_CHECKBOX:
            value.number = def.u.bd.value;
            break;
        case PF_Param_COLOR:
            value.color = {def.u.cd.value.alpha, def.u.cd.value.red, def.u.cd.value.green,
                           def.u.cd.value.blue};
            break;
        case PF_Param_POINT:
            value.x = def.u.td.x_value / kFixedOne / scale.x;
            value.y = def.u.td.y_value / kFixedOne / scale.y;
            break;
        default:
            break;
    }
    return value;
}

}  // namespace stage
