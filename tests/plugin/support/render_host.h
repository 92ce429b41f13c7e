// The stand-in host with what one render needs on top: worlds, parameters, compositor, iterate
// suites. Compositor calls are logged, not carried out.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "hostapi/host.h"
#include "model/param_table.h"
#include "model/record.h"
#include "stage/binary/gdiplus_runtime.h"
#include "support/fake_host.h"

namespace ks {

/// A frame at HD with the parameters' defaults; 8-bit unless told otherwise. The host has two
/// processors and runs their parts one after the other.
class RenderHost {
  public:
    explicit RenderHost(PF_PixelFormat format = PF_PixelFormat_ARGB32, int width = 1920,
                        int height = 1080);
    ~RenderHost() { current() = nullptr; }
    RenderHost(const RenderHost &) = delete;
    RenderHost &operator=(const RenderHost &) = delete;

    /// Renders one frame; an integer thrown is returned, as the entry point does.
    PF_Err render();

    void set_popup(Param param, int value) { params[param].pd.value = value; }
    void set_slider(Param param, double value) { params[param].fs_d.value = value; }
    void show(Param param, bool on) { params[param].bd.value = on ? 1 : 0; }
    void show_only(std::vector<Param> shown);
    void set_point(Param param, PF_Fixed x, PF_Fixed y) {
        params[param].td.x_value = x;
        params[param].td.y_value = y;
    }

    InstanceRecord &record() {
        return *reinterpret_cast<InstanceRecord *>(host.bytes(host.out.sequence_data).data());
    }

    std::vector<std::string> &log() { return host.calls.log; }
    /// The logged calls that start with one of `starts` (a number at its end whole), one per line.
    [[nodiscard]] std::string calls(const std::vector<std::string> &starts) const;
    /// What must hold after every render, failed or not.
    void expect_clean();

    fake::FakeHost host;
    std::map<int, PF_ParamDefUnion> params;
    PF_PixelFormat format;
    PF_EffectWorld input{};
    PF_EffectWorld output{};
    PF_EffectWorld original{};
    bool has_original = false;
    int powers = 0;  ///< calls of pow

    /// A world of our own with zeroed pixels.
    PF_EffectWorld make_world(int width, int height);

  private:
    static RenderHost *&current() {
        static RenderHost *host = nullptr;
        return host;
    }
    void fill_params();
    void fill_callbacks();
    void fill_world_suite();
    void fill_transform_suite();
    template <class Suite, class Pixel>
    void fill_iterate(Suite &suite, const char *name, int version);
    template <class Pixel>
    static PF_Err iterate_pixels(const char *name, A_long from, A_long to, PF_EffectWorld *src,
                                 const PF_Rect *area, void *refcon,
                                 PF_Err (*f)(void *, A_long, A_long, Pixel *, Pixel *),
                                 PF_EffectWorld *dst);
    void fill_generic_iterate();
    [[nodiscard]] int pixel_bytes() const;

    PF_WorldSuite2 worlds_{};
    PF_WorldTransformSuite1 transform_{};
    PF_Iterate8Suite1 iterate8_{};
    PF_iterate16Suite1 iterate16_{};
    PF_iterateFloatSuite1 iterate_float_{};
    AEGP_IterateSuite1 iterate_generic_{};
    stage::GdiplusRuntime gdiplus_;               ///< the scopes are drawn with the real one
    std::map<void *, std::vector<char>> pixels_;  ///< by base address
    int live_worlds_ = 0;
    int open_params_ = 0;
};

}  // namespace ks
