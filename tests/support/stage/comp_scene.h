// Comps with the real effect on some of their layers, and what their frames should be.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "stage/desk/viewer/comp_render.h"
#include "stage/session/footage.h"
#include "stage/session/session.h"
#include "support/paths.h"

namespace stage_test {

/// Codes of the depth, exactly; some pixels transparent or half so unless `opaque`.
inline stage::Picture random_picture(std::uint32_t seed, int width, int height, stage::Depth depth,
                                     bool opaque = true) {
    stage::Picture picture = stage::make_picture(width, height, stage::SampleType::Float);
    const int white = depth == stage::Depth::U8 ? stage::kWhite8 : stage::kWhite16;
    std::uint32_t state = seed;
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        state = state * 1664525u + 1013904223u;
        const int code = static_cast<int>((state >> 8) % static_cast<std::uint32_t>(white + 1));
        picture.argb[i] = static_cast<float>(code) / static_cast<float>(white);
        if (i % 4 == 0 && (opaque || (state >> 8) % 3 == 0)) picture.argb[i] = 1.0f;
    }
    return picture;
}

/// `picture` in the depth's codes, over black.
inline stage::ViewImage shown(const stage::Picture &picture, stage::Depth depth,
                              stage::BytePool &pool) {
    stage::ViewImage image;
    stage::show_over_black(stage::to_host_pixels(picture, depth, pool).view(), image);
    return image;
}

inline void expect_same(const stage::ViewImage &is, const stage::ViewImage &should,
                        const std::string &what = "") {
    ASSERT_EQ(is.width, should.width) << what;
    ASSERT_EQ(is.height, should.height) << what;
    for (int y = 0; y < is.height; ++y) {
        for (int x = 0; x < is.width; ++x) {
            ASSERT_EQ(is.at(x, y), should.at(x, y)) << what << " at " << x << ", " << y;
        }
    }
}

/// A comp of 96x160 pixels; the effect shows views of the picture alone, no scopes, so that its
/// frames depend on their input pixel by pixel. Panel refreshes are left out.
struct CompScene {
    static constexpr int kWidth = 96, kHeight = 160;

    explicit CompScene(stage::HostOptions options = {}) : session(paths::plugin(), options) {
        session.panel_shown = false;
        session.start();
        begin_comp();
    }
    /// From now on the scene is another, empty comp.
    void begin_comp(int width = kWidth, int height = kHeight) {
        comp = project().add_comp("comp", width, height, 1, 1, 10);
        project().active_comp = comp;
    }

    stage::Project &project() { return session.project(); }
    stage::Depth depth() const { return session.options().depth; }
    stage::BytePool &pool() { return session.pool(); }
    stage::Item &item_of(stage::LayerId layer) {
        return *project().item(project().layer(layer)->source);
    }

    stage::LayerId add(const stage::Picture &picture, std::int64_t frames = 1) {
        stage::Item item = footage_item(stage::still_footage(picture), "footage", 1, 1);
        item.frames = frames;
        return project().add_layer(comp, project().add_footage(std::move(item)), 0, "footage");
    }
    stage::LayerId add_random(std::uint32_t seed, int width = kWidth, int height = kHeight,
                              bool opaque = true) {
        return add(random_picture(seed, width, height, depth(), opaque));
    }
    stage::LayerId add_adjustment() {
        return project().add_adjustment_layer(comp, 0, "adjustment");
    }
    /// The effect shows `view`, a choice of "Primary Monitor View".
    stage::EffectInstance &apply(stage::LayerId layer, int view) {
        stage::EffectInstance *effect = session.apply(layer);
        if (effect == nullptr) throw stage::SessionError("the effect was refused");
        for (const char *name : {"Show Waveform Monitor", "Show Vectorscope", "Show Channel Parade",
                                 "Show Slice Waveform", "Show Histogram"}) {
            set(*effect, name, 0);
        }
        set(*effect, "Primary Monitor View", view);
        return *effect;
    }
    void set(const stage::EffectInstance &effect, const char *name, double number) {
        session.state_of(effect)
            .streams.at(static_cast<std::size_t>(session.plugin.catalog.find(name)))
            .value.number = number;
    }

    stage::ViewFrame frame(const stage::RenderSettings &settings = {}) {
        return stage::render_comp(session, comp, settings);
    }
    /// What the effect makes of `picture`, by itself in a comp of its own.
    stage::Picture alone(const stage::Picture &picture, int view) {
        const stage::ItemId before = comp;
        begin_comp(picture.width, picture.height);
        const stage::RenderResult result = session.render(apply(add(picture), view), {});
        EXPECT_EQ(result.error, 0);
        project().active_comp = comp = before;
        return result.picture;
    }
    /// The layers without any effect.
    stage::Picture plain(const stage::RenderSettings &settings = {}) {
        return stage::composite(project(), {comp, -1, false}, settings.frame,
                                {settings.downsample_x, settings.downsample_y});
    }

    stage::Session session;
    stage::ItemId comp = 0;
};

inline stage::HostOptions options_at(stage::Depth depth) {
    stage::HostOptions options;
    options.depth = depth;
    return options;
}

inline constexpr stage::Depth kAllDepths[] = {stage::Depth::U8, stage::Depth::U16,
                                              stage::Depth::Float};

}  // namespace stage_test
