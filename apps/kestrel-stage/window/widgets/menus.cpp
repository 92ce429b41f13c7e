#include "kestrel-stage/window/widgets/menus.h"

#include <imgui.h>

#include <algorithm>

namespace stage_view {

void Menus::draw_bar(WidgetLog &log) {
    if (!ImGui::BeginMainMenuBar()) return;
    height_ = static_cast<int>(ImGui::GetWindowSize().y);
    for (const Line &line : bar_lines()) draw_menu("", line, log);
    ImGui::EndMainMenuBar();
}

void Menus::draw_menu(const std::string &path, const Line &line, WidgetLog &log) {
    const std::string name = path.empty() ? line.name : path + "/" + line.name;
    // Of an open menu the last item is one inside it: the place is noted beforehand.
    const ImVec2 at = ImGui::GetCursorScreenPos();
    const ImVec2 text = ImGui::CalcTextSize(line.name.c_str());
    const bool open = ImGui::BeginMenu(line.name.c_str(), line.enabled);
    log.add_at("menu", name,
               {static_cast<int>(at.x) + 4, static_cast<int>(at.y), static_cast<int>(text.x),
                static_cast<int>(text.y)},
               line.enabled, open);
    if (!open) return;
    draw_lines(name, line.menu(), log);
    ImGui::EndMenu();
}

void Menus::draw_lines(const std::string &path, const Lines &lines, WidgetLog &log) {
    int number = 0;
    for (const Line &line : lines) {
        ImGui::PushID(++number);
        if (line.menu) {
            draw_menu(path, line, log);
        } else if (!line.act) {
            ImGui::Separator();
        } else {
            const bool chosen =
                ImGui::MenuItem(line.name.c_str(), line.keys.c_str(), line.checked, line.enabled);
            log.add("item", path + "/" + line.name, line.enabled, line.checked);
            if (chosen) line.act();
        }
        ImGui::PopID();
    }
}

void Menus::key(const SDL_Keysym &key) {
    struct Shortcut {
        SDL_Keycode code;
        bool control, shift;
        void (*act)(Menus &menus, WindowActs &acts);
    };
    static constexpr Shortcut kShortcuts[] = {
        {SDLK_o, true, false, [](Menus &menus, WindowActs &) { menus.ask_for_picture(false); }},
        {SDLK_s, true, false, [](Menus &menus, WindowActs &) { menus.ask_where_to_save(); }},
        {SDLK_q, true, false, [](Menus &, WindowActs &acts) { acts.quit = true; }},
        {SDLK_z, true, false, [](Menus &, WindowActs &acts) { acts.undo(); }},
        {SDLK_z, true, true, [](Menus &, WindowActs &acts) { acts.redo(); }},
        {SDLK_y, true, false, [](Menus &, WindowActs &acts) { acts.redo(); }},
        {SDLK_d, true, false, [](Menus &, WindowActs &acts) { acts.duplicate_layer(); }},
        {SDLK_DELETE, false, false, [](Menus &, WindowActs &acts) { acts.delete_layer(); }},
        {SDLK_SLASH, false, true, [](Menus &, WindowActs &acts) { acts.fit(); }},
        {SDLK_COMMA, false, false, [](Menus &, WindowActs &acts) { acts.zoom_step(0.5); }},
        {SDLK_PERIOD, false, false, [](Menus &, WindowActs &acts) { acts.zoom_step(2); }},
        {SDLK_PAGEUP, false, false, [](Menus &, WindowActs &acts) { acts.step_frames(-1); }},
        {SDLK_PAGEDOWN, false, false, [](Menus &, WindowActs &acts) { acts.step_frames(1); }},
    };
    const bool control = (key.mod & KMOD_CTRL) != 0;
    const bool shift = (key.mod & KMOD_SHIFT) != 0;
    const auto *found = std::ranges::find_if(kShortcuts, [&](const Shortcut &entry) {
        return entry.code == key.sym && entry.control == control && entry.shift == shift;
    });
    if (found != std::end(kShortcuts)) found->act(*this, acts_);
}

}  // namespace stage_view
