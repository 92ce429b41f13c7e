#include "kestrel-stage/window/widgets/strips.h"

#include <imgui.h>

#include <algorithm>
#include <cstdio>

namespace stage_view {
namespace {

constexpr int kLayerRows = 4;

void zoom_row(WindowActs &acts, WidgetLog &log) {
    const auto button = [&](const char *name, auto act) {
        if (ImGui::Button(name)) act();
        log.add("button", name);
        ImGui::SameLine(0, 3);
    };
    button("Fit", [&] { acts.fit(); });
    button("25 %", [&] { acts.zoom_middle(0.25); });
    button("50 %", [&] { acts.zoom_middle(0.5); });
    button("100 %", [&] { acts.zoom_middle(1); });
    button("200 %", [&] { acts.zoom_middle(2); });
    button("400 %", [&] { acts.zoom_middle(4); });
    ImGui::SameLine(0, 14);
    const stage::Item *comp = acts.comp();
    const int last = comp != nullptr ? static_cast<int>(std::min<std::int64_t>(
                                           std::max<std::int64_t>(comp->frames, 1), 1000000)) -
                                           1
                                     : 0;
    int frame = static_cast<int>(acts.desk().frame());
    ImGui::BeginDisabled(last == 0);
    ImGui::SetNextItemWidth(-1);
    if (ImGui::SliderInt("##time", &frame, 0, last, "frame %d", ImGuiSliderFlags_AlwaysClamp)) {
        acts.set_frame(frame);
    }
    log.add("time", "Frame", last > 0);
    ImGui::EndDisabled();
}

std::string marks_of(const stage::Layer &layer) {
    std::string marks;
    const auto mark = [&](std::uint32_t flag, const char *text) {
        if (layer.has_flag(flag)) marks += (marks.empty() ? "" : ", ") + std::string(text);
    };
    mark(stage::layer_flag::kAdjustment, "adjustment");
    mark(stage::layer_flag::kGuide, "guide");
    mark(stage::layer_flag::kLocked, "locked");
    if (!layer.effects.empty()) marks += (marks.empty() ? "" : ", ") + std::string("effect");
    if (!layer.position_expression.empty()) marks += ", position by expression";
    return marks;
}

void layer_row(WindowActs &acts, const stage::Layer &layer, int number, WidgetLog &log) {
    stage::Desk &desk = acts.desk();
    bool visible = layer.has_flag(stage::layer_flag::kVideoActive);
    const std::string name = std::to_string(number) + ". " + layer.name;
    const std::string marks = marks_of(layer);
    const bool selected = layer.selected;
    const stage::LayerId id = layer.id;  // acts may move the layer itself
    ImGui::PushID(id);
    if (ImGui::Checkbox("##video", &visible)) {
        acts.attempt([&] { desk.show_layer(id, visible); });
    }
    log.add("video", name, true, visible);
    ImGui::SameLine();
    if (ImGui::Selectable(name.c_str(), selected, ImGuiSelectableFlags_None, {260, 0})) {
        acts.attempt([&] { desk.select({id}); });
    }
    log.add("layer", name, true, selected);
    ImGui::SameLine(320);
    ImGui::TextDisabled("%s", marks.c_str());
    ImGui::PopID();
}

void layer_list(WindowActs &acts, float height, WidgetLog &log) {
    ImGui::PushStyleColor(ImGuiCol_ChildBg, ImVec4(0.12f, 0.12f, 0.12f, 1));
    ImGui::BeginChild("layers", {0, height}, false, ImGuiWindowFlags_AlwaysUseWindowPadding);
    if (const stage::Item *comp = acts.comp()) {
        const std::vector<stage::Layer> layers = comp->layers;
        int number = 0;
        for (const stage::Layer &layer : layers) layer_row(acts, layer, ++number, log);
    } else {
        ImGui::TextDisabled("No composition: open a picture from the File menu.");
    }
    ImGui::EndChild();
    ImGui::PopStyleColor();
}

void status_line(WindowActs &acts, double render_milliseconds, const FrameTimes &times) {
    const auto &options = acts.session().options();
    const stage::Item *comp = acts.comp();
    const std::size_t findings = acts.session().findings().size();
    ImGui::AlignTextToFramePadding();
    if (comp != nullptr) {
        ImGui::Text("%d x %d", comp->width, comp->height);
        ImGui::SameLine(0, 18);
        ImGui::Text("%.1f %%", acts.desk().viewport().zoom * 100);
        ImGui::SameLine(0, 18);
    }
    ImGui::Text("%d bpc", static_cast<int>(options.depth));
    ImGui::SameLine(0, 18);
    ImGui::Text("frame %lld", static_cast<long long>(acts.desk().frame()));
    ImGui::SameLine(0, 18);
    ImGui::Text("render %.1f ms", render_milliseconds);
    ImGui::SameLine(0, 18);
    ImGui::Text("window %.1f ms (average %.1f)", times.last(), times.average());
    ImGui::SameLine(0, 18);
    if (findings == 0) {
        ImGui::TextDisabled("no findings");
    } else {
        ImGui::TextColored({0.95f, 0.55f, 0.35f, 1}, "%zu findings", findings);
    }
}

}  // namespace

void FrameTimes::add(double milliseconds) {
    constexpr double kWeight = 0.1;
    last_ = milliseconds;
    average_ = count_ == 0 ? milliseconds : average_ + (milliseconds - average_) * kWeight;
    ++count_;
}

int strips_height() {
    const ImGuiStyle &style = ImGui::GetStyle();
    const float row = ImGui::GetFrameHeightWithSpacing();
    return static_cast<int>(row * (kLayerRows + 2) + 4 * style.WindowPadding.y);
}

void draw_strips(WindowActs &acts, double render_milliseconds, const FrameTimes &times,
                 const PixelRect &area, WidgetLog &log) {
    ImGui::SetNextWindowPos({static_cast<float>(area.x), static_cast<float>(area.y)});
    ImGui::SetNextWindowSize({static_cast<float>(area.width), static_cast<float>(area.height)});
    ImGui::Begin("Strips", nullptr,
                 ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                     ImGuiWindowFlags_NoBringToFrontOnFocus);
    zoom_row(acts, log);
    ImGui::Spacing();
    layer_list(acts, -ImGui::GetFrameHeightWithSpacing(), log);
    status_line(acts, render_milliseconds, times);
    ImGui::End();
}

}  // namespace stage_view
