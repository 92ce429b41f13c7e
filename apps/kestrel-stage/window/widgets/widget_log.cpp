#include "kestrel-stage/window/widgets/widget_log.h"

#include <imgui.h>

#include <algorithm>
#include <cmath>

namespace stage_view {
namespace {

PixelRect last_item_rect() {
    const ImVec2 low = ImGui::GetItemRectMin();
    const ImVec2 high = ImGui::GetItemRectMax();
    const ImDrawList *list = ImGui::GetWindowDrawList();
    const ImVec2 clip_low = list->GetClipRectMin();
    const ImVec2 clip_high = list->GetClipRectMax();
    const int left = static_cast<int>(std::ceil(std::max(low.x, clip_low.x)));
    const int top = static_cast<int>(std::ceil(std::max(low.y, clip_low.y)));
    const int right = static_cast<int>(std::floor(std::min(high.x, clip_high.x)));
    const int bottom = static_cast<int>(std::floor(std::min(high.y, clip_high.y)));
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

}  // namespace

void WidgetLog::add(const std::string &role, const std::string &name, bool enabled, bool checked,
                    int parameter) {
    widgets_.push_back({role, name, last_item_rect(), enabled, checked, parameter});
}

}  // namespace stage_view
