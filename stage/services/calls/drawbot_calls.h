// What the Drawbot, custom-UI and theme suites share: the frame around a call, references, numbers.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "hostapi/drawbot.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
#include "stage/services/calls/project_access.h"

namespace stage {

/// One call under way. Everything that answers with null or false has reported why.
class DrawCall {
  public:
    explicit DrawCall(HostCall &call) : call_(call), store_(call.host().drawbot) {}

    DrawbotStore &store() { return store_; }
    HostCall &host_call() { return call_; }

    template <class T>
    T *find(const void *reference) {
        return store_.find<T>(reference, call_.command());
    }
    bool finite(std::initializer_list<double> numbers, const char *what) {
        return store_.require_finite(numbers, what, call_.command());
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

/// Runs `body(DrawCall &)`, which returns A_Err, unless the call must fail. UI thread only.
template <class Body>
SPErr draw_call(const char *name, Body body) noexcept {
    HostCall call(name, Fallible::kCode, Threads::kUiOnly);
    DrawCall drawing(call);
    return run_call(call, [&]() -> A_Err { return body(drawing); });
}

/// Runs `body(DrawCall &)` on the surface of the open draw event.
template <class Body>
SPErr surface_call(const char *name, DRAWBOT_SurfaceRef surface, Body body) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        return call.find<SurfaceObject>(surface) != nullptr ? body(call) : A_Err_PARAMETER;
    });
}

/// Hands out what the store made. Null stays null.
template <class Ref>
Ref reference_as(const void *object) {
    return reinterpret_cast<Ref>(const_cast<void *>(object));
}

}  // namespace stage
