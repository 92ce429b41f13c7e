#include "kestrel-stage/window/widgets/value_widgets.h"

#include <imgui.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"

namespace stage_view {
namespace {

using stage::PanelEntry;
using stage::ParamValue;
using Kind = PanelEntry::Kind;
using Change = std::optional<ParamValue>;

/// Share of a slider's row that its track takes; the rest is the number.
constexpr float kTrackShare = 0.58f;

double rounded(double value, int precision) {
    const double scale = std::pow(10.0, std::clamp(precision, 0, 6));
    return std::round(value * scale) / scale;
}

/// The number of a slider or point as text that can be typed over. A value only once it is done.
std::optional<double> typed_number(const char *id, double now, const char *format,
                                   std::optional<double> &typed) {
    double value = now;
    if (ImGui::InputDouble(id, &value, 0, 0, format)) typed = value;
    std::optional<double> done;
    if (ImGui::IsItemDeactivated()) {
        if (ImGui::IsItemDeactivatedAfterEdit() && typed && std::isfinite(*typed)) done = typed;
        typed.reset();
    }
    return done;
}

Change slider(const PanelEntry &entry, float width, std::optional<double> &typed, WidgetLog &log) {
    double number = entry.value.number;
    const float spacing = ImGui::GetStyle().ItemInnerSpacing.x;
    const float track = std::floor(width * kTrackShare);
    Change change;
    ImGui::SetNextItemWidth(track);
    if (ImGui::SliderScalar("##track", ImGuiDataType_Double, &number, &entry.slider_minimum,
                            &entry.slider_maximum, "",
                            ImGuiSliderFlags_NoRoundToFormat | ImGuiSliderFlags_NoInput)) {
        change = entry.value;
        change->number = rounded(number, entry.precision);
    }
    log.add("slider", entry.name, !entry.disabled, false, entry.index);
    ImGui::SameLine(0, spacing);
    ImGui::SetNextItemWidth(width - track - spacing);
    char format[16];
    std::snprintf(format, sizeof format, "%%.%df%s", std::clamp(entry.precision, 0, 6),
                  entry.percent ? " %%" : "");
    if (const auto done = typed_number("##number", entry.value.number, format, typed)) {
        change = entry.value;
        change->number = *done;
    }
    log.add("number", entry.name, !entry.disabled, false, entry.index);
    if (change) change->number = std::clamp(change->number, entry.minimum, entry.maximum);
    return change;
}

Change popup(const PanelEntry &entry, float width, WidgetLog &log) {
    const int count = static_cast<int>(entry.choices.size());
    const double number = entry.value.number;
    const int now = number >= 1 && number <= count ? static_cast<int>(number) : 0;
    const std::string shown =
        now > 0 ? entry.choices[static_cast<std::size_t>(now - 1)] : std::string();
    ImGui::SetNextItemWidth(width);
    const bool open = ImGui::BeginCombo("##popup", shown.c_str(), ImGuiComboFlags_HeightLargest);
    if (!open) {
        log.add("popup", entry.name, !entry.disabled, false, entry.index);
        return {};
    }
    Change change;
    for (int choice = 1; choice <= count; ++choice) {
        const std::string &text = entry.choices[static_cast<std::size_t>(choice - 1)];
        if (text.starts_with("(-")) {
            ImGui::Separator();
            continue;
        }
        if (ImGui::Selectable(text.c_str(), choice == now) && choice != now) {
            change = entry.value;
            change->number = choice;
        }
        log.add("choice", entry.name + "/" + text, true, choice == now, entry.index);
    }
    ImGui::EndCombo();
    return change;
}

Change checkbox(const PanelEntry &entry, WidgetLog &log) {
    bool on = entry.value.number != 0;
    Change change;
    if (ImGui::Checkbox(entry.label.empty() ? "##box" : entry.label.c_str(), &on)) {
        change = entry.value;
        change->number = on ? 1 : 0;
    }
    log.add("checkbox", entry.name, !entry.disabled, on, entry.index);
    return change;
}

Change color(const PanelEntry &entry, float width, WidgetLog &log) {
    const auto &bytes = entry.value.color;  // alpha, red, green, blue
    float rgb[3];
    for (std::size_t i = 0; i < 3; ++i) rgb[i] = static_cast<float>(bytes[i + 1]) / 255;
    Change change;
    ImGui::SetNextItemWidth(width);
    if (ImGui::ColorEdit3("##color", rgb, ImGuiColorEditFlags_DisplayHex)) {
        change = entry.value;
        for (std::size_t i = 0; i < 3; ++i) {
            const float level = std::clamp(rgb[i], 0.0f, 1.0f);
            change->color[i + 1] = static_cast<std::uint8_t>(std::lround(level * 255));
        }
    }
    log.add("color", entry.name, !entry.disabled, false, entry.index);
    return change;
}

/// Largest coordinates of a point that stays on its layer; without bounds there are none.
struct PointLimits {
    double x = 0, y = 0;
    bool bounded = false;
};

PointLimits limits_of(WindowActs &acts, int index) {
    const stage::ParamInfo &info = acts.session().plugin.catalog.at(index);
    const stage::EffectInstance *effect = acts.desk().effect();
    if (info.def.u.td.restrict_bounds == 0 || effect == nullptr) return {};
    const stage::Item *extent = acts.session().project().extent_of(effect->layer);
    return {double(extent->width), double(extent->height), true};
}

Change point(WindowActs &acts, const PanelEntry &entry, float width, WidgetLog &log) {
    const PointLimits limits = limits_of(acts, entry.index);
    const double low = 0;
    ParamValue value = entry.value;
    const float spacing = ImGui::GetStyle().ItemInnerSpacing.x;
    const float half = std::floor((width - spacing) / 2);
    const auto coordinate = [&](const char *id, double &number, const double &high) {
        ImGui::SetNextItemWidth(half);
        const bool changed = ImGui::DragScalar(
            id, ImGuiDataType_Double, &number, 1.0f, limits.bounded ? &low : nullptr,
            limits.bounded ? &high : nullptr, "%.1f", ImGuiSliderFlags_AlwaysClamp);
        log.add("point", entry.name, !entry.disabled, false, entry.index);
        return changed && std::isfinite(number);
    };
    const bool x_changed = coordinate("##x", value.x, limits.x);
    ImGui::SameLine(0, spacing);
    const bool y_changed = coordinate("##y", value.y, limits.y);
    return x_changed || y_changed ? Change(value) : std::nullopt;
}

Change layer(WindowActs &acts, const PanelEntry &entry, float width, WidgetLog &log) {
    ImGui::SetNextItemWidth(width);
    if (!ImGui::BeginCombo("##layer", entry.text.c_str(), ImGuiComboFlags_HeightLarge)) {
        log.add("popup", entry.name, !entry.disabled, false, entry.index);
        return {};
    }
    Change change;
    const auto choice = [&](const std::string &text, stage::LayerId id) {
        const bool now = entry.value.layer == id;
        ImGui::PushID(id);
        if (ImGui::Selectable(text.c_str(), now) && !now) {
            change = entry.value;
            change->layer = id;
        }
        ImGui::PopID();
        log.add("choice", entry.name + "/" + text, true, now, entry.index);
    };
    choice("None", 0);
    const stage::EffectInstance *effect = acts.desk().effect();
    const stage::Item *comp = acts.session().project().comp_of(effect->layer);
    for (std::size_t i = 0; i < comp->layers.size(); ++i) {
        choice(std::to_string(i + 1) + ". " + comp->layers[i].name, comp->layers[i].id);
    }
    ImGui::EndCombo();
    return change;
}

}  // namespace

Change value_widget(WindowActs &acts, const PanelEntry &entry, float width,
                    std::optional<double> &typed, WidgetLog &log) {
    switch (entry.kind) {
        case Kind::kSlider:
            return slider(entry, width, typed, log);
        case Kind::kPopup:
            return popup(entry, width, log);
        case Kind::kCheckbox:
            return checkbox(entry, log);
        case Kind::kColor:
            return color(entry, width, log);
        case Kind::kPoint:
            return point(acts, entry, width, log);
        case Kind::kLayer:
            return layer(acts, entry, width, log);
        case Kind::kGroup:
            break;
    }
    return {};
}

}  // namespace stage_view
