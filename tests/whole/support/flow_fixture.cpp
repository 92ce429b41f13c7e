#include "whole/support/flow_fixture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "stage/session/footage.h"
#include "stage/session/scene.h"

#include "support/paths.h"

namespace ks::flow {
namespace {

using oracle::Image;

// Names with the group where one is needed to tell them apart.
constexpr const char *kShow[6] = {"",
                                  "Show Waveform Monitor",
                                  "Show Vectorscope",
                                  "Show Channel Parade",
                                  "Show Slice Waveform",
                                  "Show Histogram"};
constexpr const char *kSize[6] = {"",
                                  "Waveform Monitor/Scope Width",
                                  "Vectorscope/Scope Size",
                                  "Channel Parade/Scope Width",
                                  "Slice Waveform/Scope Width",
                                  "Histogram/Scope Height"};

float float_sample(std::mt19937 &random, const Content &content) {
    const auto bits = static_cast<std::uint32_t>(random());
    if (content.not_finite && bits % 23 == 0) {
        constexpr float kOdd[] = {std::numeric_limits<float>::quiet_NaN(),
                                  std::numeric_limits<float>::infinity(),
                                  -std::numeric_limits<float>::infinity(), 1e30f, -1e30f};
        return kOdd[(bits >> 8) % 5];
    }
    const auto unit = static_cast<float>(bits >> 8) / 16777216.0f;
    return content.wild ? unit * 10.0f - 1.0f : unit;
}

stage::SampleType sample_type(oracle::Depth depth) {
    if (depth == oracle::Depth::kByte) return stage::SampleType::U8;
    return depth == oracle::Depth::kWord ? stage::SampleType::HostU16 : stage::SampleType::Float;
}

std::int32_t to_fixed(double pixels) {
    return static_cast<std::int32_t>(std::floor(pixels * 65536.0 + 0.5));
}

}  // namespace

Image random_image(std::uint32_t seed, int width, int height, oracle::Depth depth,
                   const Content &content) {
    std::mt19937 random(seed);
    Image image = oracle::make_image(width, height, depth);
    for (std::size_t i = 0; i < image.bytes8.size(); ++i) {
        image.bytes8[i] = static_cast<std::uint8_t>(random() >> 24);
        if (content.opaque && i % 4 == 0) image.bytes8[i] = 255;
    }
    for (std::size_t i = 0; i < image.words16.size(); ++i) {
        image.words16[i] = static_cast<std::uint16_t>((random() >> 8) % 32769);
        if (content.opaque && i % 4 == 0) image.words16[i] = 32768;
    }
    const Content alpha{content.opaque, false, content.not_finite && !content.opaque};
    for (std::size_t i = 0; i < image.floats.size(); ++i) {
        image.floats[i] = float_sample(random, i % 4 == 0 ? alpha : content);
        if (content.opaque && i % 4 == 0) image.floats[i] = 1.0f;
    }
    return image;
}

Image cropped(const Image &image, const PF_LRect &rect) {
    Image part = oracle::make_image(rect.right - rect.left, rect.bottom - rect.top, image.depth);
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            store_pixel(part, x, y, stored_pixel(image, rect.left + x, rect.top + y));
        }
    }
    return part;
}

oracle::Depth oracle_depth(stage::Depth depth) {
    if (depth == stage::Depth::U8) return oracle::Depth::kByte;
    return depth == stage::Depth::U16 ? oracle::Depth::kWord : oracle::Depth::kFloat;
}

stage::Picture to_picture(const Image &image, int dx, int dy) {
    stage::Picture picture =
        stage::make_picture(image.width * dx, image.height * dy, sample_type(image.depth));
    const auto top = static_cast<float>(oracle::full_scale(image.depth));
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const std::size_t from = oracle::component_index(image, x / dx, y / dy);
            for (std::size_t c = 0; c < 4; ++c) {
                float &to = picture.at(x, y)[c];
                if (image.depth == oracle::Depth::kByte) to = image.bytes8[from + c] / top;
                if (image.depth == oracle::Depth::kWord) to = image.words16[from + c] / top;
                if (image.depth == oracle::Depth::kFloat) to = image.floats[from + c];
            }
        }
    }
    return picture;
}

Image to_image(const stage::Picture &picture, stage::Depth depth) {
    Image image = oracle::make_image(picture.width, picture.height, oracle_depth(depth));
    const auto code = [&](std::size_t i, double top) {
        const double value = static_cast<double>(picture.argb[i]) * top;
        return std::isnan(value) ? 0.0 : std::clamp(std::floor(value + 0.5), 0.0, top);
    };
    for (std::size_t i = 0; i < image.bytes8.size(); ++i) {
        image.bytes8[i] = static_cast<std::uint8_t>(code(i, 255.0));
    }
    for (std::size_t i = 0; i < image.words16.size(); ++i) {
        image.words16[i] = static_cast<std::uint16_t>(code(i, 32768.0));
    }
    if (depth == stage::Depth::Float) image.floats = picture.argb;
    return image;
}

stage::HostOptions at_depth(stage::Depth depth) {
    stage::HostOptions options;
    options.depth = depth;
    return options;
}

oracle::FixedPoint checked_out_point(double x, double y, const SceneOptions &scene) {
    return {to_fixed(x * (1.0 / scene.downsample_x)), to_fixed(y * (1.0 / scene.downsample_y))};
}

Flow::Flow(stage::HostOptions options) : session(paths::plugin(), options) {
    session.panel_shown = false;
    session.start();
}

Flow::~Flow() {
    session.stop();
    expect_clean("the whole session");
}

void Flow::expect_clean(const std::string &what) {
    for (const stage::Finding &finding : host().strict.violations()) {
        ADD_FAILURE() << what << ": " << finding.check << " in " << finding.command << ": "
                      << finding.text;
    }
    host().strict.clear();
}

stage::Item Flow::item_of(const Image &image) const {
    const stage::Picture picture = to_picture(image, scene_.downsample_x, scene_.downsample_y);
    return footage_item(stage::still_footage(picture), "footage", scene_.par_num, scene_.par_den);
}

void Flow::make_scene(const Image &image, const SceneOptions &options) {
    scene_ = options;
    stage::SceneParts parts;
    parts.picture = item_of(image);
    parts.adjustment = options.adjustment;
    const stage::Scene built = build_scene(session, std::move(parts));
    comp = built.comp;
    layer = built.carrier;
    effect = built.effect;
}

void Flow::set_original(const Image &image) {
    original = add_original(session.project(), comp, item_of(image));
    value("Original Source").layer = original;
}

stage::ParamValue &Flow::value(std::string_view name) {
    const int index = session.plugin.catalog.find(name);
    return session.state_of(*effect).streams.at(static_cast<std::size_t>(index)).value;
}

void Flow::set(std::string_view name, double number) {
    value(name).number = number;
}

void Flow::set_point(std::string_view name, double x, double y) {
    value(name).x = x;
    value(name).y = y;
}

void Flow::set_values(const oracle::FrameSettings &settings) {
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        set(kShow[kind], settings.show[kind] ? 1 : 0);
        set(kSize[kind], settings.size[kind]);
    }
    set("Monitor Layout", settings.layout);
    set("Primary Monitor View", settings.view);
    set("View Channels", settings.channels);
    set("Apply Corrections", settings.corrections);
    set("Luminance Math's", settings.luma_math);
    set("Waveform Scopes Aspect Ratio", settings.aspect);
    set("Monitor Gamma", settings.gamma);
    set("Monitor Gain", settings.gain);
    set("Compare with Original", settings.compare);
    set("Compare Opacity", settings.compare_opacity);
    set("Monitor Size", settings.monitor_size);
    set("Slice Position", settings.slice_position);
}

stage::RenderResult Flow::render(stage::RenderSettings settings) {
    settings.downsample_x = scene_.downsample_x;
    settings.downsample_y = scene_.downsample_y;
    return session.render(*effect, settings);
}

Image Flow::frame(stage::RenderSettings settings) {
    const stage::RenderResult result = render(settings);
    EXPECT_EQ(result.error, 0) << result.message;
    EXPECT_FALSE(result.escaped);
    EXPECT_FALSE(result.skipped);
    EXPECT_EQ(result.message, "");
    return to_image(result.picture, host().options.depth);
}

oracle::StackingOrder Flow::stacking_order() const {
    constexpr std::size_t kOrderAt = 3080;
    const std::vector<std::uint8_t> bytes = record();
    oracle::StackingOrder order;
    for (std::size_t i = 0; i < 5; ++i) {
        order.kinds[i] = static_cast<std::int8_t>(bytes.at(kOrderAt + i));
    }
    order.count = static_cast<std::int8_t>(bytes.at(kOrderAt + 5));
    return order;
}

void Flow::restore(const std::vector<std::uint8_t> &flat) {
    session.set_flat_data(*effect, flat);
    ASSERT_EQ(session.resetup(*effect).error, 0);
}

std::string describe(const oracle::FrameSettings &s, stage::Depth depth) {
    std::string text =
        "depth " + std::to_string(static_cast<int>(depth)) + " layout " + std::to_string(s.layout) +
        " view " + std::to_string(s.view) + " channels " + std::to_string(s.channels) + " gamma " +
        std::to_string(s.gamma) + " gain " + std::to_string(s.gain) + " luma " +
        std::to_string(s.luma_math) + " corrections " + std::to_string(s.corrections) +
        " compare " + std::to_string(s.compare) + " opacity " + std::to_string(s.compare_opacity) +
        " size " + std::to_string(s.monitor_size) + " downsample " +
        std::to_string(s.downsample_x_den) + "x" + std::to_string(s.downsample_y_den) + " par " +
        std::to_string(s.par_num) + "/" + std::to_string(s.par_den) + " show ";
    for (std::size_t kind = 1; kind <= 5; ++kind) text += s.show[kind] ? '1' : '0';
    return text;
}

}  // namespace ks::flow
