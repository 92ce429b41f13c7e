#include "stage/smart_render.h"

#include <algorithm>
#include <chrono>

#include "hostapi/constants.h"
#include "stage/smart_render_callbacks.h"

namespace stage {
namespace {

PF_LRect bounds_of(const Picture &picture) {
    return {0, 0, picture.width, picture.height};
}

Picture cropped(const Picture &picture, const PF_LRect &rect) {
    if (rect.left == 0 && rect.top == 0 && rect.right == picture.width &&
        rect.bottom == picture.height) {
        return picture;
    }
    Picture result = make_picture(rect.right - rect.left, rect.bottom - rect.top, picture.native);
    for (int y = 0; y < result.height; ++y) {
        const float *from = picture.at(rect.left, rect.top + y);
        std::copy(from, from + std::size_t{4} * static_cast<std::size_t>(result.width),
                  result.at(0, y));
    }
    return result;
}

bool is_opaque(const Picture &picture) {
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        if (!(picture.argb[i] >= 1.0f)) return false;
    }
    return true;
}

/// Worlds of one render, destroyed on every path.
class FrameWorlds {
  public:
    explicit FrameWorlds(Host &host) : host_(host) {}
    ~FrameWorlds() {
        for (World *world : worlds_) host_.worlds.destroy(world, "the host");
    }
    FrameWorlds(const FrameWorlds &) = delete;
    FrameWorlds &operator=(const FrameWorlds &) = delete;

    World *input(const Picture &picture, const PF_LRect &rect, const PF_RationalScale &par) {
        World *world = make(rect, par);
        fill_world(*world, cropped(picture, rect));
        host_.worlds.protect(world);
        return world;
    }
    World *make(const PF_LRect &rect, const PF_RationalScale &par) {
        World *world = host_.worlds.create(rect.right - rect.left, rect.bottom - rect.top,
                                           host_.options.depth, host_.options.worlds);
        world->def.origin_x = rect.left;
        world->def.origin_y = rect.top;
        world->def.pix_aspect_ratio = par;
        worlds_.push_back(world);
        return world;
    }

  private:
    Host &host_;
    std::vector<World *> worlds_;
};

void check_output_pixels(Host &host, const World &output, bool solid) {
    int unwritten = 0;
    for (int y = 0; y < output.def.height; ++y) {
        for (int x = 0; x < output.def.width; ++x) unwritten += is_poison(output, x, y) ? 1 : 0;
    }
    if (unwritten > 0) {
        host.strict.report("output.unwritten", command_name(PF_Cmd_SMART_RENDER),
                           std::to_string(unwritten) + " output pixels were not written");
    }
    const Picture picture = world_picture(output);
    if (output.depth == Depth::U16) {
        const auto over = std::ranges::count_if(picture.argb, [](float v) { return v > 1.0f; });
        if (over > 0) {
            host.strict.report("output.over_range", command_name(PF_Cmd_SMART_RENDER),
                               std::to_string(over) + " 16-bit codes are above 32768");
        }
    }
    if (solid && !is_opaque(picture)) {
        host.strict.report("solid.alpha", command_name(PF_Cmd_SMART_RENDER),
                           "the frame was declared opaque but is not");
    }
}

void check_rectangles(Host &host, const PF_PreRenderOutput &output, const PF_LRect &request) {
    const PF_LRect inside = intersection(output.result_rect, request);
    const bool same =
        inside.left == output.result_rect.left && inside.top == output.result_rect.top &&
        inside.right == output.result_rect.right && inside.bottom == output.result_rect.bottom;
    if (!is_empty(output.result_rect) && !same) {
        host.strict.report("rect.result", command_name(PF_Cmd_SMART_PRE_RENDER),
                           "the result rectangle leaves the request");
    }
}

short bits_of(Depth depth) {
    return static_cast<short>(depth);
}

}  // namespace

Picture downsampled(const Picture &picture, int dx, int dy) {
    if (dx == 1 && dy == 1) return picture;
    Picture result =
        make_picture((picture.width + dx - 1) / dx, (picture.height + dy - 1) / dy, picture.native);
    result.pixel_aspect = picture.pixel_aspect;
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const int right = std::min(picture.width, (x + 1) * dx);
            const int bottom = std::min(picture.height, (y + 1) * dy);
            double sum[4] = {};
            for (int from_y = y * dy; from_y < bottom; ++from_y) {
                for (int from_x = x * dx; from_x < right; ++from_x) {
                    for (int c = 0; c < 4; ++c) sum[c] += picture.at(from_x, from_y)[c];
                }
            }
            const double count = double(right - x * dx) * (bottom - y * dy);
            for (int c = 0; c < 4; ++c) result.at(x, y)[c] = static_cast<float>(sum[c] / count);
        }
    }
    return result;
}

RenderResult smart_render(CommandCaller &caller, Host &host, CommandContext context,
                          const RenderSettings &settings, const Picture &input,
                          const Picture *original) {
    context.downsample_x = {1, static_cast<A_u_long>(settings.downsample_x)};
    context.downsample_y = {1, static_cast<A_u_long>(settings.downsample_y)};
    context.quality = settings.high_quality ? PF_Quality_HI : PF_Quality_LO;

    const Picture small_input = downsampled(input, settings.downsample_x, settings.downsample_y);
    Picture small_original;
    if (original != nullptr) {
        small_original = downsampled(*original, settings.downsample_x, settings.downsample_y);
    }

    SmartFrame frame;
    frame.layer_rect = bounds_of(small_input);
    if (original != nullptr) frame.original_rect = bounds_of(small_original);
    frame.request = settings.request.value_or(frame.layer_rect);
    frame.par = context.pixel_aspect;
    frame.full_width = input.width;
    frame.full_height = input.height;
    frame.input_is_opaque = is_opaque(small_input);

    RenderResult result;
    PF_PreRenderInput pre_input{};
    pre_input.output_request.rect = frame.request;
    pre_input.output_request.channel_mask = 15;
    pre_input.bitdepth = bits_of(host.options.depth);
    PF_PreRenderOutput pre_output{};
    PF_PreRenderCallbacks pre_callbacks = pre_render_callbacks();
    PF_PreRenderExtra pre_extra{&pre_input, &pre_output, &pre_callbacks};
    context.frame = &frame;
    context.extra = &pre_extra;
    for (int pass = settings.send_pre_render_twice ? 2 : 1; pass > 0; --pass) {
        frame.layers.clear();
        pre_output = PF_PreRenderOutput{};
        const CommandResult pre = caller.call(PF_Cmd_SMART_PRE_RENDER, context);
        result.error = pre.error;
        result.message = pre.message;
        result.escaped = pre.escaped;
    }
    result.result_rect = pre_output.result_rect;
    result.max_result_rect = pre_output.max_result_rect;
    result.solid = pre_output.solid != 0;
    if (result.error != 0) return result;
    check_rectangles(host, pre_output, frame.request);
    if (is_empty(pre_output.result_rect)) {
        result.skipped = true;
        return result;
    }

    FrameWorlds worlds(host);
    for (auto &[id, layer] : frame.layers) {
        const bool own = layer.index == 0;
        if (is_empty(layer.rect) || (own ? settings.null_input : settings.null_original)) continue;
        layer.world = worlds.input(own ? small_input : small_original, layer.rect, frame.par);
        (own ? frame.input : frame.original) = layer.world;
    }
    frame.result = pre_output.result_rect;
    if (!settings.null_output) frame.output = worlds.make(frame.result, frame.par);

    PF_SmartRenderInput render_input{};
    render_input.output_request = pre_input.output_request;
    render_input.bitdepth = pre_input.bitdepth;
    render_input.pre_render_data = pre_output.pre_render_data;
    PF_SmartRenderCallbacks callbacks = smart_render_callbacks();
    PF_SmartRenderExtra extra{&render_input, &callbacks};
    context.extra = &extra;
    const auto begin = std::chrono::steady_clock::now();
    const CommandResult rendered = caller.call(PF_Cmd_SMART_RENDER, context);
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    result.error = rendered.error;
    result.message = rendered.message;
    result.escaped = rendered.escaped;
    if (result.error == 0 && frame.output != nullptr && frame.input != nullptr) {
        if (host.strict.enabled) check_output_pixels(host, *frame.output, result.solid);
        result.picture = world_picture(*frame.output);
        result.picture.pixel_aspect = input.pixel_aspect;
    }
    return result;
}

}  // namespace stage
