// The event side of a stand-in host: the parameter array, a window with zoom and pan, an event
// record, and a recorder of Drawbot and theme calls. Every call of it that can fail counts as a
// fallible call of the FakeHost.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "plugin/ui/handles/expected_handles.h"
#include "support/fake_host.h"

namespace fake {

/// Handed out as references that nobody may look into.
template <class Ref>
Ref reference(std::uintptr_t number) {
    return reinterpret_cast<Ref>(number);
}

class EventHost {
  public:
    static constexpr std::uintptr_t kDraw = 0x10;
    static constexpr std::uintptr_t kSupplier = 0x20;
    static constexpr std::uintptr_t kSurface = 0x30;
    static constexpr std::uintptr_t kFirstPath = 0x100;

    EventHost() {
        current() = this;
        for (std::size_t i = 0; i < definitions.size(); ++i) params[i] = &definitions[i];
        host.in.time_scale = 2400;
        host.in.current_time = -7;
        context_data.w_type = PF_Window_COMP;
        fill_conversions();
        fill_suites();
        show(expected::Scene{});
    }
    ~EventHost() { current() = nullptr; }
    EventHost(const EventHost &) = delete;
    EventHost &operator=(const EventHost &) = delete;

    /// Puts a scene into in_data and the parameter array, by index.
    void show(const expected::Scene &scene) {
        const auto fixed = [](double v) { return static_cast<A_long>(std::llround(v * 65536)); };
        host.in.width = scene.width;
        host.in.height = scene.height;
        host.in.pixel_aspect_ratio = {scene.par_num, static_cast<A_u_long>(scene.par_den)};
        host.in.downsample_x = {1, static_cast<A_u_long>(scene.den_x)};
        host.in.downsample_y = {1, static_cast<A_u_long>(scene.den_y)};
        definitions[2].u.pd.value = scene.layout;
        definitions[4].u.td.x_value = fixed(scene.monitor_x);
        definitions[4].u.td.y_value = fixed(scene.monitor_y);
        definitions[5].u.fs_d.value = scene.monitor_size;
        definitions[11].u.fs_d.value = scene.compare;
        definitions[11].ui_flags = scene.compare_disabled ? 32 : 0;
        definitions[12].u.fs_d.value = scene.opacity;
        definitions[61].u.pd.value = scene.aspect;
        constexpr std::size_t kShow[] = {19, 20, 21, 22, 23};
        constexpr std::size_t kPosition[] = {27, 38, 43, 50, 55};
        constexpr std::size_t kSize[] = {28, 39, 44, 51, 56};
        for (std::size_t i = 0; i < 5; ++i) {
            definitions[kShow[i]].u.bd.value = scene.scopes[i].on ? 1 : 0;
            definitions[kPosition[i]].u.td.x_value = fixed(scene.scopes[i].x);
            definitions[kPosition[i]].u.td.y_value = fixed(scene.scopes[i].y);
            definitions[kSize[i]].u.fs_d.value = scene.scopes[i].size;
        }
    }

    /// An event record as the host clears it before the call; the click's own record stays.
    PF_EventExtra &event(PF_EventType type) {
        const PF_DoClickEventInfo record = extra.u.do_click;
        extra.u = {};
        if (type == PF_Event_DO_CLICK || type == PF_Event_DRAG) extra.u.do_click = record;
        extra.contextH = &context;
        extra.e_type = type;
        extra.evt_out_flags = 0;
        return extra;
    }
    /// The pointer of a click or drag event.
    PF_EventExtra &pointer_event(PF_EventType type, A_long x, A_long y) {
        event(type);
        extra.u.do_click.screen_point.h = x;
        extra.u.do_click.screen_point.v = y;
        return extra;
    }
    /// A fresh record, as at the start of each click.
    void fresh_record() { extra.u.do_click = {}; }

    [[nodiscard]] std::set<int> changed() const {
        std::set<int> indices;
        for (std::size_t i = 0; i < definitions.size(); ++i) {
            if (definitions[i].uu.change_flags != 0) indices.insert(static_cast<int>(i));
        }
        return indices;
    }
    /// Log lines that begin with one of the recorder's words, in order.
    [[nodiscard]] std::vector<std::string> drawn() const {
        std::vector<std::string> lines;
        for (const std::string &line : host.calls.log) {
            for (const char *word : {"NewPath", "MoveTo", "LineTo", "FillPath", "StrokePath",
                                     "PaintRect", "ReleaseObject"}) {
                if (line.rfind(word, 0) == 0) lines.push_back(line);
            }
        }
        return lines;
    }
    [[nodiscard]] bool logged(const std::string &start) const {
        for (const std::string &line : host.calls.log) {
            if (line.rfind(start, 0) == 0) return true;
        }
        return false;
    }
    /// True when every suite is given back; the Surface suite drifts by `draws` between its two
    /// versions.
    [[nodiscard]] bool suites_balanced(int draws) const {
        for (const auto &[key, count] : host.held) {
            int expected_count = 0;
            if (key.first == kDRAWBOT_SurfaceSuite)
                expected_count = key.second == 1 ? draws : -draws;
            if (count != expected_count) return false;
        }
        return true;
    }

    FakeHost host;
    expected::Window window;  ///< zoom and pan; its composition flag is not used here
    std::array<PF_ParamDef, 69> definitions{};
    std::array<PF_ParamDef *, 69> params{};
    PF_Context context_data{};
    PF_Context *context = &context_data;
    PF_EventExtra extra{};
    std::uintptr_t draw_reference = kDraw;  ///< 0: succeeds with none
    bool null_path = false;                 ///< NewPath succeeds with none
    std::set<std::uintptr_t> live_paths;

  private:
    static EventHost *&current() {
        static EventHost *host = nullptr;
        return host;
    }
    static PF_Err step(const std::string &what) { return current()->host.calls.step(what); }
    static std::string name(const void *ref) {
        return std::to_string(reinterpret_cast<std::uintptr_t>(ref));
    }
    static std::string numbers(std::initializer_list<float> values) {
        std::string text;
        for (float value : values) {
            char buffer[32];
            std::snprintf(buffer, sizeof buffer, " %g", static_cast<double>(value));
            text += buffer;
        }
        return text;
    }
    static void expect_path(const void *path) {
        if (current()->live_paths.count(reinterpret_cast<std::uintptr_t>(path)) == 0) {
            current()->host.calls.blame("use of no path " + name(path));
        }
    }
    static void expect_ref(const void *ref, std::uintptr_t want) {
        if (reinterpret_cast<std::uintptr_t>(ref) != want) {
            current()->host.calls.blame("wrong reference " + name(ref));
        }
    }
    static PF_Err convert(const char *what, void *refcon, PF_ContextH context_handle) {
        if (refcon != current()) current()->host.calls.blame("refcon");
        if (context_handle != &current()->context) current()->host.calls.blame("context");
        return step(what);
    }
    static PF_Err in_time(const char *what, void *refcon, PF_ContextH context_handle, A_long time,
                          A_long scale) {
        return convert(
            (std::string(what) + " at " + std::to_string(time) + "/" + std::to_string(scale))
                .c_str(),
            refcon, context_handle);
    }

    void fill_conversions();
    void fill_suites();
    void fill_theme();
    void fill_drawbot();

    PF_ANSICallbacksSuite1 ansi_{};
    PF_EffectCustomUISuite1 custom_ui_{};
    PF_EffectCustomUIOverlayThemeSuite1 theme_{};
    DRAWBOT_DrawbotSuite1 draw_{};
    DRAWBOT_SupplierSuite1 supplier_{};
    DRAWBOT_SurfaceSuite1 surface_{};
    DRAWBOT_PathSuite1 paths_{};
    std::uintptr_t next_path_ = kFirstPath;
};

}  // namespace fake
