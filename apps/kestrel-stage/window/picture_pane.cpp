#include "kestrel-stage/window/picture_pane.h"

#include <algorithm>
#include <cmath>

#include "stage/desk/viewer/window_picture.h"

namespace stage_view {
namespace {

/// One step of the wheel.
constexpr double kWheelZoom = 1.25;

struct CursorOf {
    PF_CursorType type;
    SDL_SystemCursor shape;
};

/// What the effect asks for over its handles: up and down, left and right, all ways.
constexpr CursorOf kCursors[] = {
    {21, SDL_SYSTEM_CURSOR_SIZENS},
    {22, SDL_SYSTEM_CURSOR_SIZEWE},
    {75, SDL_SYSTEM_CURSOR_SIZEALL},
};

}  // namespace

void PicturePane::place(const PixelRect &area) {
    area_ = area;
    acts_.settle_view(std::max(area.width, 1), std::max(area.height, 1));
}

void PicturePane::press(int x, int y, int button, int clicks, bool space_down, bool free) {
    if (!free || !area_.contains(x, y) || holder_ != Holder::kNone) return;
    last_x_ = x;
    last_y_ = y;
    if (button == SDL_BUTTON_MIDDLE || (button == SDL_BUTTON_LEFT && space_down)) {
        holder_ = Holder::kPan;
    } else if (button == SDL_BUTTON_LEFT && acts_.comp() != nullptr) {
        holder_ = Holder::kEffect;
        acts_.attempt([&] { acts_.desk().press(x - area_.x, y - area_.y, clicks); });
        if (acts_.desk().dragging()) drag_times_ = {};
    }
}

void PicturePane::move(int x, int y, bool free) {
    under_pointer_ = area_.contains(x, y) && (free || holds_mouse());
    if (holder_ == Holder::kPan) {
        acts_.pan_by(x - last_x_, y - last_y_);
    } else if (holder_ == Holder::kEffect || under_pointer_) {
        dragged_ = dragged_ || acts_.desk().dragging();
        if (acts_.comp() != nullptr) {
            acts_.attempt([&] { acts_.desk().move(x - area_.x, y - area_.y); });
        }
    }
    last_x_ = x;
    last_y_ = y;
}

void PicturePane::release(int x, int y, int button) {
    const bool left = button == SDL_BUTTON_LEFT;
    if (holder_ == Holder::kEffect && left) {
        acts_.attempt([&] { acts_.desk().release(x - area_.x, y - area_.y); });
        holder_ = Holder::kNone;
    } else if (holder_ == Holder::kPan && (left || button == SDL_BUTTON_MIDDLE)) {
        holder_ = Holder::kNone;
    }
}

void PicturePane::wheel(int x, int y, double steps) {
    if (steps == 0) return;
    const double zoom = acts_.desk().viewport().zoom * std::pow(kWheelZoom, steps);
    acts_.zoom_to(zoom, x - area_.x, y - area_.y);
}

void PicturePane::leave() {
    if (under_pointer_ && !holds_mouse()) acts_.attempt([&] { acts_.desk().leave(); });
    under_pointer_ = false;
}

SDL_SystemCursor PicturePane::cursor(bool space_down) const {
    if (holder_ == Holder::kPan || (space_down && holder_ == Holder::kNone)) {
        return SDL_SYSTEM_CURSOR_HAND;
    }
    const PF_CursorType wanted = acts_.desk().cursor();
    const auto *found = std::ranges::find(kCursors, wanted, &CursorOf::type);
    return found == std::end(kCursors) ? SDL_SYSTEM_CURSOR_ARROW : found->shape;
}

void PicturePane::refresh_texture() {
    stage::Desk &desk = acts_.desk();
    const std::uint64_t version = desk.version();
    const stage::Viewport &viewport = desk.viewport();
    const bool same_view = viewport == shown_viewport_ && desk.window == shown_window_;
    if (shown_ && version == shown_version_ && same_view) return;
    const bool rendered = !shown_ || version != shown_version_;
    const stage::ViewFrame &frame = desk.view();
    if (rendered) {
        render_milliseconds_ = frame.seconds * 1000;
        ++renders_;
    }
    const stage::ViewImage picture =
        stage::window_picture(frame.image, desk.source_width(), desk.source_height(), viewport,
                              desk.window_overlay(), stage::OverlayTheme{});
    if (texture_ == nullptr || texture_width_ != picture.width ||
        texture_height_ != picture.height) {
        texture_ = window_.make_picture_texture(picture.width, picture.height);
        texture_width_ = picture.width;
        texture_height_ = picture.height;
    }
    SDL_UpdateTexture(texture_.get(), nullptr, picture.pixels.data(), picture.width * 4);
    shown_ = true;
    shown_version_ = version;
    shown_viewport_ = viewport;
    shown_window_ = desk.window;
}

void PicturePane::draw() {
    if (acts_.comp() == nullptr) return;
    // A frame that cannot be had is not asked for again before something changes.
    if (!acts_.attempt([&] { refresh_texture(); })) {
        shown_ = true;
        shown_version_ = acts_.desk().version();
        shown_viewport_ = acts_.desk().viewport();
        shown_window_ = acts_.desk().window;
    }
    if (texture_ == nullptr) return;
    const SDL_Rect target{area_.x, area_.y, texture_width_, texture_height_};
    const SDL_Rect clip{area_.x, area_.y, area_.width, area_.height};
    SDL_RenderSetClipRect(window_.renderer(), &clip);
    SDL_RenderCopy(window_.renderer(), texture_.get(), nullptr, &target);
    SDL_RenderSetClipRect(window_.renderer(), nullptr);
}

void PicturePane::finish_frame(double milliseconds) {
    if (!dragged_) return;
    dragged_ = false;
    ++drag_times_.frames;
    drag_times_.milliseconds += milliseconds;
    drag_times_.worst_milliseconds = std::max(drag_times_.worst_milliseconds, milliseconds);
}

}  // namespace stage_view
