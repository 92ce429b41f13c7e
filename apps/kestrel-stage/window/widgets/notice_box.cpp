#include "kestrel-stage/window/widgets/notice_box.h"

#include <imgui.h>

#include <algorithm>

namespace stage_view {
namespace {

constexpr const char *kTitle = "Kestrel Scopes 2##notice";

void put_sign(bool as_error) {
    const float side = 30;
    const ImVec2 at = ImGui::GetCursorScreenPos();
    const ImU32 color = as_error ? IM_COL32(214, 96, 64, 255) : IM_COL32(84, 138, 196, 255);
    const char *sign = as_error ? "!" : "i";
    const ImVec2 text = ImGui::CalcTextSize(sign);
    ImDrawList *list = ImGui::GetWindowDrawList();
    list->AddRectFilled(at, {at.x + side, at.y + side}, color);
    list->AddText({at.x + (side - text.x) / 2, at.y + (side - text.y) / 2},
                  IM_COL32(255, 255, 255, 255), sign);
    ImGui::Dummy({side, side});
}

bool dismissed_by_key() {
    return ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Enter), false) ||
           ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape), false);
}

}  // namespace

void draw_notice(WindowActs &acts, WidgetLog &log) {
    if (acts.notices.empty()) return;
    if (!ImGui::IsPopupOpen(kTitle)) ImGui::OpenPopup(kTitle);
    const ImVec2 screen = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos({screen.x / 2, screen.y / 2}, ImGuiCond_Always, {0.5f, 0.5f});
    if (!ImGui::BeginPopupModal(kTitle, nullptr,
                                ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoMove)) {
        return;
    }
    const Notice notice = acts.notices.front();
    ImGui::Spacing();
    put_sign(notice.as_error);
    ImGui::SameLine(0, 14);
    ImGui::BeginGroup();
    ImGui::PushTextWrapPos(ImGui::GetCursorPosX() + std::min(460.0f, screen.x * 0.7f));
    ImGui::TextUnformatted(notice.text.c_str());
    ImGui::PopTextWrapPos();
    ImGui::EndGroup();
    log.add(notice.as_error ? "error" : "message", notice.text);
    ImGui::Spacing();
    const float width = 110;
    ImGui::SetCursorPosX(std::max(ImGui::GetWindowContentRegionMax().x - width, 0.0f));
    const bool agreed = ImGui::Button("OK", {width, 0}) || dismissed_by_key();
    log.add("button", "OK");
    if (agreed) {
        acts.notices.pop_front();
        ImGui::CloseCurrentPopup();
    }
    ImGui::EndPopup();
}

}  // namespace stage_view
