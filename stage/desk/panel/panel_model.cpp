#include "stage/desk/panel/panel_model.h"

#include <fmt/format.h>

#include <algorithm>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "stage/session/session.h"

namespace stage {
namespace {

using Kind = PanelEntry::Kind;

struct KindOfType {
    PF_ParamType type;
    Kind kind;
};

constexpr KindOfType kKinds[] = {
    {PF_Param_GROUP_START, Kind::kGroup}, {PF_Param_POPUP, Kind::kPopup},
    {PF_Param_CHECKBOX, Kind::kCheckbox}, {PF_Param_COLOR, Kind::kColor},
    {PF_Param_POINT, Kind::kPoint},       {PF_Param_LAYER, Kind::kLayer},
};

/// Everything else is a number with a slider.
Kind kind_of(PF_ParamType type) {
    const auto *found = std::ranges::find(kKinds, type, &KindOfType::type);
    return found == std::end(kKinds) ? Kind::kSlider : found->kind;
}

std::string decimals(double number, int precision) {
    return fmt::format("{:.{}f}", number, std::clamp(precision, 0, 4));
}

/// Layers are shown with their number in the timeline, the top one being 1.
std::string layer_text(const Project &project, LayerId id) {
    const Layer *layer = project.layer(id);
    if (layer == nullptr) return "None";
    return fmt::format("{}. {}", project.index_of(id) + 1, layer->name);
}

std::string value_text(const Session &session, const PanelEntry &entry) {
    switch (entry.kind) {
        case Kind::kSlider:
            return decimals(entry.value.number, entry.precision) + (entry.percent ? " %" : "");
        case Kind::kPoint:
            return decimals(entry.value.x, 1) + ", " + decimals(entry.value.y, 1);
        case Kind::kLayer:
            return layer_text(session.project(), entry.value.layer);
        default:
            return session.plugin.catalog.to_text(entry.index, entry.value);
    }
}

/// Without the flag of GLOBAL_SETUP the host closes every group, whatever the groups ask for.
bool starts_collapsed(const Session &session, Kind kind, PF_ParamFlags flags) {
    if (kind == Kind::kSlider) return (flags & PF_ParamFlag_COLLAPSE_TWIRLY) != 0;
    if (kind != Kind::kGroup) return false;
    const PF_OutFlags2 reported = session.plugin.reported.out_flags2;
    return (reported & PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG) == 0 ||
           (flags & PF_ParamFlag_START_COLLAPSED) != 0;
}

void put_slider(PanelEntry &entry, const PF_FloatSliderDef &slider, const ParamLook &look) {
    entry.minimum = double{slider.valid_min};
    entry.maximum = double{slider.valid_max};
    entry.slider_minimum = double{look.slider_min};
    entry.slider_maximum = double{look.slider_max};
    entry.precision = look.precision;
    entry.percent = (look.display_flags & PF_ValueDisplayFlag_PERCENT) != 0;
}

PanelEntry entry_of(const Session &session, const EffectInstance &instance, int index) {
    const ParamInfo &info = session.plugin.catalog.at(index);
    const ParamLook &look = instance.looks.at(static_cast<std::size_t>(index));
    PanelEntry entry;
    entry.index = index;
    entry.kind = kind_of(info.def.param_type);
    entry.name = look.name;
    if (entry.kind == Kind::kCheckbox) entry.label = info.text;
    entry.choices = info.choices;
    if (info.def.param_type == PF_Param_FLOAT_SLIDER) put_slider(entry, info.def.u.fs_d, look);
    entry.value = session.value(instance, index);
    entry.text = value_text(session, entry);
    entry.disabled = (look.ui_flags & PF_PUI_DISABLED) != 0;
    entry.collapsed = starts_collapsed(session, entry.kind, look.flags);
    return entry;
}

/// The column that values start in.
constexpr std::size_t kValueColumn = 44;

const char *twirl(const PanelEntry &entry) {
    if (entry.kind != Kind::kGroup && entry.kind != Kind::kSlider) return "  ";
    return entry.collapsed ? "> " : "v ";
}

std::string line_of(const PanelEntry &entry) {
    std::string line(static_cast<std::size_t>(2 * entry.depth), ' ');
    line += twirl(entry) + entry.name;
    if (entry.kind != Kind::kGroup) {
        line.resize(std::max(line.size() + 1, kValueColumn), ' ');
        line += entry.text;
    }
    if (!entry.label.empty()) line += "  " + entry.label;
    if (entry.hidden) line += "  (hidden)";
    if (entry.disabled) line += "  (greyed)";
    return line;
}

}  // namespace

std::vector<PanelEntry> panel_entries(const Session &session, const EffectInstance &instance) {
    const auto &streams = session.state_of(instance).streams;
    std::vector<PanelEntry> entries;
    std::vector<bool> hidden_groups;  // of the groups around, each with those around it
    for (int index = 1; index < session.plugin.catalog.count(); ++index) {
        const PF_ParamType type = session.plugin.catalog.at(index).def.param_type;
        if (type == PF_Param_GROUP_END) {
            hidden_groups.pop_back();
            continue;
        }
        PanelEntry entry = entry_of(session, instance, index);
        entry.depth = static_cast<int>(hidden_groups.size());
        entry.hidden = streams.at(static_cast<std::size_t>(index)).hidden ||
                       (!hidden_groups.empty() && hidden_groups.back());
        if (entry.kind == Kind::kGroup) hidden_groups.push_back(entry.hidden);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string panel_text(const std::vector<PanelEntry> &entries, bool with_hidden) {
    std::string text;
    for (const PanelEntry &entry : entries) {
        if (!entry.hidden || with_hidden) text += line_of(entry) + "\n";
    }
    return text;
}

}  // namespace stage
