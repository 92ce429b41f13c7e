#include "kestrel-stage/window/widgets/effect_controls.h"

#include <imgui.h>

#include <cmath>

#include "kestrel-stage/window/widgets/value_widgets.h"
#include "stage/effect/effect_instance.h"

namespace stage_view {
namespace {

using stage::PanelEntry;

/// Native libraries carry no property list to learn the name from.
constexpr const char *kEffectName = "Kestrel Scopes 2";

constexpr float kIndent = 15;
/// Where values start, as a share of the panel's width.
constexpr float kNameShare = 0.55f;

constexpr ImGuiWindowFlags kPanelFlags = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                         ImGuiWindowFlags_NoTitleBar |
                                         ImGuiWindowFlags_NoBringToFrontOnFocus;

ImVec2 corner(const PixelRect &area) {
    return {static_cast<float>(area.x), static_cast<float>(area.y)};
}

ImVec2 extent(const PixelRect &area) {
    return {static_cast<float>(area.width), static_cast<float>(area.height)};
}

}  // namespace

bool EffectControls::is_open(const PanelEntry &group) const {
    const auto found = twirls_.find(group.index);
    return found != twirls_.end() ? found->second : !group.collapsed;
}

void EffectControls::refresh_entries() {
    entries_.clear();
    const stage::EffectInstance *effect = acts_.desk().effect();
    if (effect == nullptr) return;
    acts_.attempt([&] { entries_ = stage::panel_entries(acts_.session(), *effect); });
}

void EffectControls::header(WidgetLog &log) {
    const stage::EffectInstance *effect = acts_.desk().effect();
    ImGui::AlignTextToFramePadding();
    if (effect == nullptr) {
        ImGui::TextDisabled("Select a layer with the effect.");
        return;
    }
    ImGui::TextUnformatted(kEffectName);
    ImGui::SameLine();
    ImGui::TextDisabled("%s", acts_.session().project().layer(effect->layer)->name.c_str());
    const char *reset = "Reset";
    const float width = ImGui::CalcTextSize(reset).x + 2 * ImGui::GetStyle().FramePadding.x;
    ImGui::SameLine(ImGui::GetWindowContentRegionMax().x - width);
    if (ImGui::Button(reset)) acts_.reset_effect();
    log.add("button", reset);
    ImGui::Separator();
}

void EffectControls::group_row(const PanelEntry &entry, WidgetLog &log) {
    const bool open = is_open(entry);
    ImGui::SetNextItemOpen(open);
    const bool now =
        ImGui::TreeNodeEx("##group",
                          ImGuiTreeNodeFlags_NoTreePushOnOpen | ImGuiTreeNodeFlags_SpanAvailWidth |
                              ImGuiTreeNodeFlags_Framed | ImGuiTreeNodeFlags_FramePadding,
                          "%s", entry.name.c_str());
    log.add("group", entry.name, !entry.disabled, now, entry.index);
    if (now != open) twirls_[entry.index] = now;
}

void EffectControls::value_row(const PanelEntry &entry, WidgetLog &log) {
    const float full = ImGui::GetWindowContentRegionMax().x;
    const float start = std::floor(full * kNameShare);
    ImGui::BeginDisabled(entry.disabled);
    ImGui::AlignTextToFramePadding();
    const ImVec2 at = ImGui::GetCursorScreenPos();
    const ImVec2 window = ImGui::GetWindowPos();
    ImGui::PushClipRect(at, {window.x + start - 6, at.y + ImGui::GetFrameHeight()}, true);
    ImGui::TextUnformatted(entry.name.c_str());
    log.add("label", entry.name, !entry.disabled, false, entry.index);
    ImGui::PopClipRect();
    ImGui::SameLine(start);
    const auto change = value_widget(acts_, entry, full - start, typed_, log);
    ImGui::EndDisabled();
    if (change && !(*change == entry.value)) acts_.set_value(entry.index, *change);
}

void EffectControls::draw(const PixelRect &area, WidgetLog &log) {
    refresh_entries();
    ImGui::SetNextWindowPos(corner(area));
    ImGui::SetNextWindowSize(extent(area));
    ImGui::Begin("Effect Controls", nullptr, kPanelFlags | ImGuiWindowFlags_NoScrollbar);
    header(log);
    ImGui::BeginChild("rows", {0, 0}, false, ImGuiWindowFlags_AlwaysVerticalScrollbar);
    int closed_depth = -1;  // of the closed group around, none when negative
    for (const PanelEntry &entry : entries_) {
        if (entry.hidden) continue;
        if (closed_depth >= 0 && entry.depth > closed_depth) continue;
        const bool group = entry.kind == PanelEntry::Kind::kGroup;
        closed_depth = group && !is_open(entry) ? entry.depth : -1;
        const float indent = kIndent * static_cast<float>(entry.depth);
        ImGui::PushID(entry.index);
        if (indent > 0) ImGui::Indent(indent);
        group ? group_row(entry, log) : value_row(entry, log);
        if (indent > 0) ImGui::Unindent(indent);
        ImGui::PopID();
    }
    ImGui::EndChild();
    ImGui::End();
}

}  // namespace stage_view
