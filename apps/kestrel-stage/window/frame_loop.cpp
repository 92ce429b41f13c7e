#include "kestrel-stage/window/frame_loop.h"

#include <backends/imgui_impl_sdl.h>
#include <imgui.h>

#include <algorithm>
#include <cfloat>
#include <chrono>

#include "kestrel-stage/window/imgui_draw.h"
#include "kestrel-stage/window/report.h"
#include "kestrel-stage/window/widgets/notice_box.h"
#include "stage/image/replacement_file.h"

namespace stage_view {
namespace {

constexpr int kLongestWait = 250;  // milliseconds

/// A signal to end that arrives just before a wait begins does not end it, so that no wait is long.
void wait_for_event() {
    while (SDL_WaitEventTimeout(nullptr, kLongestWait) == 0) {
    }
}

/// Frames after the last event in which a widget may still change: a popup opens in the first and
/// finds its size in the second.
constexpr int kRestFrames = 3;

constexpr int kPanelWidth = 470;

int button_place(Uint8 button) {
    return button == SDL_BUTTON_LEFT ? 0 : button == SDL_BUTTON_RIGHT ? 1 : 2;
}

SDL_SystemCursor widget_cursor() {
    switch (ImGui::GetMouseCursor()) {
        case ImGuiMouseCursor_TextInput:
            return SDL_SYSTEM_CURSOR_IBEAM;
        case ImGuiMouseCursor_ResizeEW:
            return SDL_SYSTEM_CURSOR_SIZEWE;
        case ImGuiMouseCursor_ResizeNS:
            return SDL_SYSTEM_CURSOR_SIZENS;
        default:
            return SDL_SYSTEM_CURSOR_ARROW;
    }
}

}  // namespace

FrameLoop::FrameLoop(WindowActs &acts, Window &window, const ViewOptions &options)
    : acts_(acts),
      window_(window),
      options_(options),
      pane_(acts, window),
      controls_(acts),
      menus_(acts) {}

void FrameLoop::take_move() {
    if (!pending_move_) return;
    mouse_x_ = static_cast<float>(pending_move_->x);
    mouse_y_ = static_cast<float>(pending_move_->y);
    mouse_inside_ = true;
    const bool held_by_widget = buttons_[0] && !pane_.holds_mouse();
    pane_.move(pending_move_->x, pending_move_->y, !popup_open_ && !held_by_widget);
    pending_move_.reset();
}

void FrameLoop::take_button(const SDL_MouseButtonEvent &button) {
    mouse_x_ = static_cast<float>(button.x);
    mouse_y_ = static_cast<float>(button.y);
    mouse_inside_ = true;
    const bool down = button.type == SDL_MOUSEBUTTONDOWN;
    buttons_[button_place(button.button)] = down;
    if (down) {
        if (pane_.area().contains(button.x, button.y)) acts_.settle_edits(false);
        pane_.press(button.x, button.y, button.button, button.clicks, space_down_, !popup_open_);
        // A number that is being typed is done with a press beside it.
        if (pane_.holds_mouse()) ImGui::SetWindowFocus(nullptr);
    } else {
        pane_.release(button.x, button.y, button.button);
    }
}

void FrameLoop::take_key(const SDL_KeyboardEvent &key) {
    ImGuiIO &io = ImGui::GetIO();
    // SDL's own state may be ahead of this event.
    io.KeyCtrl = (key.keysym.mod & KMOD_CTRL) != 0;
    io.KeyShift = (key.keysym.mod & KMOD_SHIFT) != 0;
    io.KeyAlt = (key.keysym.mod & KMOD_ALT) != 0;
    const bool typing = io.WantTextInput;
    if (key.keysym.sym == SDLK_SPACE) space_down_ = key.type == SDL_KEYDOWN && !typing;
    if (key.type != SDL_KEYDOWN || typing) return;
    const bool dialog = menus_.asks() || !acts_.notices.empty();
    if (!popup_open_ && !pane_.holds_mouse()) menus_.key(key.keysym);
    // All of the menus at once: the pointer over one of them would open it again.
    if (popup_open_ && !dialog && key.keysym.sym == SDLK_ESCAPE) ImGui::SetWindowFocus(nullptr);
}

bool FrameLoop::take_event(const Event &event) {
    if (event.type == SDL_MOUSEMOTION) {
        pending_move_ = event.motion;
        return false;
    }
    take_move();
    switch (event.type) {
        case SDL_QUIT:
            acts_.quit = true;
            return true;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            take_button(event.button);
            return true;
        case SDL_MOUSEWHEEL: {
            const int x = static_cast<int>(mouse_x_);
            const int y = static_cast<int>(mouse_y_);
            if (pane_.area().contains(x, y) && !popup_open_) {
                pane_.wheel(x, y, double{event.wheel.preciseY});
            } else {
                ImGui_ImplSDL2_ProcessEvent(&event);
            }
            return false;
        }
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            ImGui_ImplSDL2_ProcessEvent(&event);
            take_key(event.key);
            return true;
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_LEAVE) {
                mouse_inside_ = false;
                pane_.leave();
            }
            ImGui_ImplSDL2_ProcessEvent(&event);
            return false;
        default:
            ImGui_ImplSDL2_ProcessEvent(&event);
            return false;
    }
}

void FrameLoop::take_events() {
    Event event;
    bool any = false;
    const auto next = [&] {
        if (!held_back_) return SDL_PollEvent(&event) != 0;
        event = *held_back_;
        held_back_.reset();
        return true;
    };
    while (next()) {
        any = true;
        const bool button = event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEBUTTONUP;
        if (button && pending_move_) {
            held_back_ = event;
            break;
        }
        if (take_event(event)) break;
    }
    take_move();
    unsettled_ = any ? kRestFrames : unsettled_ - 1;
}

void FrameLoop::draw_widgets() {
    log_.clear();
    menus_.draw_bar(log_);
    const int top = menus_.height();
    const int width = window_.width();
    const int height = window_.height();
    const int panel = std::min(kPanelWidth, width / 2);
    const int strips = std::min(strips_height(), (height - top) / 2);
    pane_.place({0, top, width - panel, height - top - strips});
    draw_strips(acts_, pane_.render_milliseconds(), times_,
                {0, height - strips, width - panel, strips}, log_);
    controls_.draw({width - panel, top, panel, height - top}, log_);
    menus_.draw_dialog(log_);
    acts_.collect_messages();
    if (!menus_.asks()) draw_notice(acts_, log_);
}

void FrameLoop::choose_cursor() {
    const bool in_pane = pane_.holds_mouse() || (pane_.under_pointer() && !popup_open_);
    window_.set_cursor(in_pane ? pane_.cursor(space_down_) : widget_cursor());
}

void FrameLoop::draw() {
    ImGui_ImplSDL2_NewFrame();
    ImGuiIO &io = ImGui::GetIO();
    // SDL's own state may be ahead of the events that were taken so far.
    const bool somewhere = mouse_inside_ || std::ranges::any_of(buttons_, [](bool b) { return b; });
    io.MousePos = somewhere ? ImVec2(mouse_x_, mouse_y_) : ImVec2(-FLT_MAX, -FLT_MAX);
    for (int i = 0; i < 3; ++i) io.MouseDown[i] = buttons_[i] && !pane_.holds_mouse();
    // In menus and dialogs keys move about; elsewhere they belong to the picture.
    io.ConfigFlags &= ~ImGuiConfigFlags_NavEnableKeyboard;
    if (popup_open_) io.ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    acts_.settle_edits(io.MouseDown[0] || ImGui::IsAnyItemActive());
    ImGui::NewFrame();
    draw_widgets();
    popup_open_ =
        ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopupId | ImGuiPopupFlags_AnyPopupLevel);
    ImGui::Render();
    SDL_SetRenderDrawColor(window_.renderer(), 0x23, 0x23, 0x23, 0xFF);
    SDL_RenderClear(window_.renderer());
    pane_.draw();
    draw_imgui(window_.renderer(), *ImGui::GetDrawData());
    choose_cursor();
    ++drawn_frames_;
}

void FrameLoop::settled() {
    ++settled_frames_;
    if (options_.report.empty()) return;
    const ReportSources sources{acts_,
                                pane_,
                                controls_.entries(),
                                log_,
                                window_.cursor(),
                                window_.width(),
                                window_.height(),
                                settled_frames_,
                                drawn_frames_};
    stage::write_whole_file(options_.report, report_text(sources));
}

void FrameLoop::run() {
    using Clock = std::chrono::steady_clock;
    unsettled_ = kRestFrames;
    const auto enough = [this] {
        return options_.frames > 0 && settled_frames_ >= options_.frames;
    };
    while (!acts_.quit && !enough()) {
        if (unsettled_ <= 0 && options_.frames == 0) wait_for_event();
        const Clock::time_point start = Clock::now();
        take_events();
        draw();
        const bool last = acts_.quit || (unsettled_ <= 0 && options_.frames > 0 &&
                                         settled_frames_ + 1 >= options_.frames);
        if (last && !options_.screenshot.empty()) window_.write_screenshot(options_.screenshot);
        window_.present();
        const std::chrono::duration<double, std::milli> spent = Clock::now() - start;
        times_.add(spent.count());
        pane_.finish_frame(spent.count());
        if (unsettled_ <= 0) settled();
    }
}

}  // namespace stage_view
