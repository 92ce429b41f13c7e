// What the Drawbot, custom-UI and theme suites share: references and numbers.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "hostapi/drawbot.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"

namespace stage {

/// Rules of most drawing calls.
inline constexpr CallRules kDrawCall{.threads = Threads::kUiOnly, .null_error = A_Err_PARAMETER};

/// One call under way. Everything that answers with null or false has reported why.
class DrawCall {
  public:
    // NOLINTNEXTLINE: what bodies of drawing calls take for a call
    DrawCall(HostCall &call) : call_(call), store_(call.host().drawbot) {}

    DrawbotStore &store() { return store_; }
    const std::string &command() const { return call_.command(); }

    template <class T>
    T *find(const void *reference) {
        return store_.find<T>(reference, command());
    }
    /// Whether this is the surface of the open draw event.
    bool on(DRAWBOT_SurfaceRef surface) { return find<SurfaceObject>(surface) != nullptr; }
    bool finite(std::initializer_list<double> numbers, const char *what) {
        return store_.require_finite(numbers, what, command());
    }
    /// False for null as well, without a finding.
    bool read(const DRAWBOT_ColorRGBA *from, DrawColor &color) {
        if (from == nullptr ||
            !finite({from->red, from->green, from->blue, from->alpha}, "colour")) {
            return false;
        }
        color = {from->red, from->green, from->blue, from->alpha};
        return true;
    }
    bool read(const DRAWBOT_RectF32 *from, DrawPrimitive::Rect &rect) {
        if (from == nullptr ||
            !finite({from->left, from->top, from->width, from->height}, "rectangle")) {
            return false;
        }
        rect = {from->left, from->top, from->width, from->height};
        return true;
    }
    bool read(const DRAWBOT_PointF32 *from, DrawPoint &point) {
        if (from == nullptr || !finite({from->x, from->y}, "point")) return false;
        point = {from->x, from->y};
        return true;
    }

    A_Err record(DrawPrimitive primitive) {
        if (call_.traced()) call_.arguments(to_text(primitive));
        store_.record(std::move(primitive));
        return A_Err_NONE;
    }

  private:
    HostCall &call_;
    DrawbotStore &store_;
};

/// Hands out what the store made. Null stays null.
template <class Ref>
Ref reference_as(const void *object) {
    return reinterpret_cast<Ref>(const_cast<void *>(object));
}

}  // namespace stage
