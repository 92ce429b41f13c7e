#include "stage/desk/panel/panel_json.h"

#include <nlohmann/json.hpp>

namespace stage {
namespace {

using nlohmann::ordered_json;
using Kind = PanelEntry::Kind;

const char *kind_name(Kind kind) {
    switch (kind) {
        case Kind::kGroup:
            return "group";
        case Kind::kSlider:
            return "slider";
        case Kind::kPopup:
            return "popup";
        case Kind::kCheckbox:
            return "checkbox";
        case Kind::kColor:
            return "color";
        case Kind::kPoint:
            return "point";
        case Kind::kLayer:
            return "layer";
    }
    return "";
}

ordered_json value_json(const PanelEntry &entry) {
    const ParamValue &value = entry.value;
    switch (entry.kind) {
        case Kind::kCheckbox:
            return value.number != 0;
        case Kind::kColor:
            return value.color;
        case Kind::kPoint:
            return {value.x, value.y};
        case Kind::kLayer:
            return value.layer;
        default:
            return value.number;
    }
}

ordered_json entry_json(const PanelEntry &entry) {
    ordered_json json = {{"index", entry.index},
                         {"depth", entry.depth},
                         {"kind", kind_name(entry.kind)},
                         {"name", entry.name}};
    if (entry.kind != Kind::kGroup) {
        json["value"] = value_json(entry);
        json["text"] = entry.text;
    }
    if (entry.kind == Kind::kCheckbox) json["label"] = entry.label;
    if (entry.kind == Kind::kPopup) json["choices"] = entry.choices;
    if (entry.kind == Kind::kSlider) {
        json["range"] = {entry.minimum, entry.maximum};
        json["slider"] = {entry.slider_minimum, entry.slider_maximum};
        json["precision"] = entry.precision;
        json["percent"] = entry.percent;
    }
    json["hidden"] = entry.hidden;
    json["disabled"] = entry.disabled;
    json["collapsed"] = entry.collapsed;
    return json;
}

}  // namespace

ordered_json panel_json(const std::vector<PanelEntry> &entries, bool with_hidden) {
    ordered_json list = ordered_json::array();
    for (const PanelEntry &entry : entries) {
        if (!entry.hidden || with_hidden) list.push_back(entry_json(entry));
    }
    return list;
}

}  // namespace stage
