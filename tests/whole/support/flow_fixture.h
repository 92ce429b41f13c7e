// The real plug-in in the stage: a scene, an applied effect, values by name, frames as oracle
// pictures.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "oracle/frame_oracle.h"
#include "oracle/image.h"
#include "stage/session/session.h"

namespace ks::flow {

// What to put into a random picture.
struct Content {
    bool opaque = false;      // alpha at full scale everywhere, else anything
    bool wild = false;        // float: negative and over-range values up to 8
    bool not_finite = false;  // float: NaN and infinities here and there
};

// The same picture for the same seed on every platform.
oracle::Image random_image(std::uint32_t seed, int width, int height, oracle::Depth depth,
                           const Content &content = {});

// The rectangle of `image`.
oracle::Image cropped(const oracle::Image &image, const PF_LRect &rect);

oracle::Depth oracle_depth(stage::Depth depth);

// The picture in which every pixel of `image` is a block of dx by dy equal ones, so that a render
// at 1/dx by 1/dy reads exactly `image` again. Codes are divided by their full scale.
stage::Picture to_picture(const oracle::Image &image, int dx = 1, int dy = 1);

// The picture in codes of `depth` (nearest), or its floats.
oracle::Image to_image(const stage::Picture &picture, stage::Depth depth);

// How the scene's footage and comp are made.
struct SceneOptions {
    int downsample_x = 1, downsample_y = 1;  // the images are those of this resolution
    int par_num = 1, par_den = 1;
    bool adjustment = false;  // the effect sits on an adjustment layer over the footage
};

// A session with the plug-in started. At its end the session is stopped, and every strict finding
// that is no known departure fails the test.
class Flow {
  public:
    explicit Flow(stage::HostOptions options = {});
    ~Flow();
    Flow(const Flow &) = delete;
    Flow &operator=(const Flow &) = delete;

    // A comp with a layer of `image` and the effect applied. Panel refreshes are left out: what
    // they do to the values is no part of these tests.
    void make_scene(const oracle::Image &image, const SceneOptions &options = {});
    // The layer that "Original Source" refers to, beneath everything and not shown.
    void set_original(const oracle::Image &image);

    // Writes a parameter's value as undo and keyframes do: no command is sent.
    void set(std::string_view name, double number);
    void set_point(std::string_view name, double x, double y);  // layer pixels, full resolution

    // Writes all values that a frame depends on; points are layer pixels at full resolution.
    void set_values(const oracle::FrameSettings &settings);

    // Renders with the scene's resolution; the frame must come out without error.
    oracle::Image frame(stage::RenderSettings settings = {});
    stage::RenderResult render(stage::RenderSettings settings = {});

    std::vector<std::uint8_t> record() const { return session.sequence_bytes(*effect); }
    oracle::StackingOrder stacking_order() const;
    // Gives the instance this flat record and lets the plug-in rebuild it.
    void restore(const std::vector<std::uint8_t> &flat);

    stage::Host &host() { return session.host; }
    // Fails the test for every violation so far, then forgets them.
    void expect_clean(const std::string &what);

    stage::Session session;
    stage::EffectInstance *effect = nullptr;
    stage::ItemId comp = 0;
    stage::LayerId layer = 0;     // carries the effect
    stage::LayerId original = 0;  // 0 when there is none

  private:
    stage::ParamValue &value(std::string_view name);
    stage::Item item_of(const oracle::Image &image) const;

    SceneOptions scene_;
};

// Host options with a depth, everything else as usual.
stage::HostOptions at_depth(stage::Depth depth);

// The settings with their points filled in for a render at 1/dx by 1/dy: what the check-out hands
// over, rounded to the nearest 1/65536.
oracle::FixedPoint checked_out_point(double x, double y, const SceneOptions &scene);

inline constexpr stage::Depth kDepths[] = {stage::Depth::U8, stage::Depth::U16,
                                           stage::Depth::Float};
inline constexpr int kLayouts[] = {1, 3, 4, 6, 7};

std::string describe(const oracle::FrameSettings &settings, stage::Depth depth);

}  // namespace ks::flow
