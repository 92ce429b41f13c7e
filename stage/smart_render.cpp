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

SourceFacts facts(const Picture &full, const Picture &reduced, const PF_RationalScale &par) {
    return {bounds_of(reduced), par, full.width, full.height, is_opaque(reduced)};
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
        return;  // what else is wrong with them is not the plug-in's
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

bool contains(const PF_LRect &outer, const PF_LRect &inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/// Rules of the two rectangles. A result that leaves the request, without saying that it will, is
/// cut to it: the host has no use for the rest.
void check_rectangles(Host &host, PF_PreRenderOutput &output, const PF_LRect &request) {
    if (is_empty(output.result_rect)) return;
    const bool extra = (output.flags & PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS) != 0;
    if (!contains(output.max_result_rect, output.result_rect)) {
        host.strict.report("rect.max", command_name(PF_Cmd_SMART_PRE_RENDER),
                           "the result rectangle leaves the largest one");
    }
    if (extra || contains(request, output.result_rect)) return;
    host.strict.report("rect.result", command_name(PF_Cmd_SMART_PRE_RENDER),
                       "the result rectangle leaves the request");
    output.result_rect = intersection(output.result_rect, request);
}

/// The plug-in's data for the render is the host's once pre-render is over.
void free_pre_render_data(Host &host, PF_PreRenderOutput &output) {
    if (output.pre_render_data == nullptr) return;
    if (output.delete_pre_render_data_func != nullptr) {
        output.delete_pre_render_data_func(output.pre_render_data);
    } else {
        // A host would call its own free, which on Windows is not the plug-in's.
        host.strict.report("pre_render.data", command_name(PF_Cmd_SMART_PRE_RENDER),
                           "pre-render data without a function that deletes it");
    }
    output.pre_render_data = nullptr;
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

namespace {

/// One smart render in steps; holds what the two commands share.
class SmartRender {
  public:
    SmartRender(CommandCaller &caller, Host &host, CommandContext context,
                const RenderSettings &settings, const Picture &input, const Picture *original)
        : caller_(caller),
          host_(host),
          context_(context),
          settings_(settings),
          worlds_(host),
          input_(downsampled(input, settings.downsample_x, settings.downsample_y)) {
        context_.downsample_x = {1, static_cast<A_u_long>(settings.downsample_x)};
        context_.downsample_y = {1, static_cast<A_u_long>(settings.downsample_y)};
        context_.quality = settings.high_quality ? PF_Quality_HI : PF_Quality_LO;
        context_.frame = &frame_;
        frame_.own = facts(input, input_, context_.pixel_aspect);
        if (original != nullptr) {
            original_ = downsampled(*original, settings.downsample_x, settings.downsample_y);
            frame_.original = facts(*original, original_, settings.original_aspect);
        }
        frame_.request = settings.request.value_or(frame_.own.rect);
    }

    ~SmartRender() { free_pre_render_data(host_, pre_output_); }
    SmartRender(const SmartRender &) = delete;
    SmartRender &operator=(const SmartRender &) = delete;

    RenderResult run() {
        for (int pass = settings_.send_pre_render_twice ? 2 : 1; pass > 0; --pass) pre_render();
        if (result_.error != 0) return result_;
        check_rectangles(host_, pre_output_, frame_.request);
        result_.result_rect = pre_output_.result_rect;
        result_.skipped = is_empty(pre_output_.result_rect);
        if (!result_.skipped) {
            make_worlds();
            render();
        }
        return result_;
    }

  private:
    void note(const CommandResult &command) {
        result_.error = command.error;
        result_.message = command.message;
        result_.escaped = command.escaped;
    }

    void pre_render() {
        PF_PreRenderInput input{};
        input.output_request.rect = frame_.request;
        input.output_request.channel_mask = kAllChannels;
        input.bitdepth = bits_of(host_.options.depth);
        PF_PreRenderCallbacks callbacks = pre_render_callbacks();
        free_pre_render_data(host_, pre_output_);
        pre_output_ = PF_PreRenderOutput{};
        PF_PreRenderExtra extra{&input, &pre_output_, &callbacks};
        frame_.layers.clear();
        context_.extra = &extra;
        note(caller_.call(PF_Cmd_SMART_PRE_RENDER, context_));
        result_.result_rect = pre_output_.result_rect;
        result_.max_result_rect = pre_output_.max_result_rect;
        result_.solid = pre_output_.solid != 0;
    }

    void make_worlds() {
        for (auto &[id, layer] : frame_.layers) {
            const bool own = layer.index == 0;
            const bool null = own ? settings_.null_input : settings_.null_original;
            if (is_empty(layer.rect) || null) continue;
            layer.world = worlds_.input(own ? input_ : original_, layer.rect,
                                        own ? frame_.own.par : frame_.original.par);
            (own ? frame_.input : frame_.original_input) = layer.world;
        }
        if (!settings_.null_output) {
            frame_.output = worlds_.make(pre_output_.result_rect, frame_.own.par);
        }
    }

    void render() {
        PF_SmartRenderInput input{};
        input.output_request.rect = frame_.request;
        input.output_request.channel_mask = kAllChannels;
        input.bitdepth = bits_of(host_.options.depth);
        input.pre_render_data = pre_output_.pre_render_data;
        PF_SmartRenderCallbacks callbacks = smart_render_callbacks();
        PF_SmartRenderExtra extra{&input, &callbacks};
        context_.extra = &extra;
        const auto begin = std::chrono::steady_clock::now();
        note(caller_.call(PF_Cmd_SMART_RENDER, context_));
        result_.seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        if (result_.error != 0 || frame_.output == nullptr) return;
        if (host_.strict.enabled) check_output_pixels(host_, *frame_.output, result_.solid);
        result_.picture = world_picture(*frame_.output);
    }

    static constexpr PF_ChannelMask kAllChannels = 15;

    CommandCaller &caller_;
    Host &host_;
    CommandContext context_;
    const RenderSettings &settings_;
    FrameWorlds worlds_;
    Picture input_;
    Picture original_;
    SmartFrame frame_;
    PF_PreRenderOutput pre_output_{};
    RenderResult result_;
};

}  // namespace

RenderResult smart_render(CommandCaller &caller, Host &host, CommandContext context,
                          const RenderSettings &settings, const Picture &input,
                          const Picture *original) {
    RenderResult result = SmartRender(caller, host, context, settings, input, original).run();
    result.picture.pixel_aspect = input.pixel_aspect;
    return result;
}

}  // namespace stage
