#include "stage/commands/smart_render.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "hostapi/constants.h"
#include "stage/services/smart_render_callbacks.h"

namespace stage {
namespace {

SourceFacts facts(LayerPixels &layer, const PF_RationalScale &par) {
    SourceFacts facts;
    if (!layer.nothing) facts.rect = {0, 0, layer.pixels.width, layer.pixels.height};
    facts.par = par;
    facts.full_width = layer.full_width;
    facts.full_height = layer.full_height;
    facts.opaque = !layer.nothing && layer.is_opaque();
    return facts;
}

/// The part of `view` inside `rect`, which lies in it.
PixelView cropped(const PixelView &view, const PF_LRect &rect) {
    const std::ptrdiff_t left = std::ptrdiff_t{rect.left} * bytes_per_pixel(view.depth);
    return {view.base + rect.top * view.rowbytes + left, view.rowbytes, rect.right - rect.left,
            rect.bottom - rect.top, view.depth};
}

PixelView view_of(const World &world) {
    return {reinterpret_cast<std::byte *>(world.def.data), world.def.rowbytes, world.def.width,
            world.def.height, world.depth};
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

    World *input(const HostPixels &pixels, const PF_LRect &rect, const PF_RationalScale &par) {
        World *world = make(rect, par);
        copy_rows(cropped(pixels.view(), rect), view_of(*world));
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
    /// Its pixels outlive it.
    HostPixels take(World *world) {
        std::erase(worlds_, world);
        return host_.worlds.destroy_and_keep(world, "the host");
    }

  private:
    Host &host_;
    std::vector<World *> worlds_;
};

/// Codes above white; none in float, which has no limit.
template <Depth kDepth>
std::int64_t count_over_range(const PixelView &view) {
    if constexpr (kDepth == Depth::U16) {
        std::int64_t over = 0;
        for (int y = 0; y < view.height; ++y) {
            const auto *row = view.row<const A_u_short>(y);
            int in_row = 0;
            for (int i = 0; i < view.width * 4; ++i) in_row += row[i] > kWhite16 ? 1 : 0;
            over += in_row;
        }
        return over;
    } else {
        return 0;
    }
}

void check_output_pixels(Host &host, const World &output, bool solid) {
    const std::int64_t unwritten = count_poison(output);
    if (unwritten > 0) {
        host.strict.report("output.unwritten", command_name(PF_Cmd_SMART_RENDER),
                           std::to_string(unwritten) + " output pixels were not written");
        return;  // what else is wrong with them is not the plug-in's
    }
    const PixelView view = view_of(output);
    const std::int64_t over =
        visit_depth(output.depth, [&]<Depth kDepth>() { return count_over_range<kDepth>(view); });
    if (over > 0) {
        host.strict.report("output.over_range", command_name(PF_Cmd_SMART_RENDER),
                           std::to_string(over) + " 16-bit codes are above 32768");
    }
    if (solid && !is_opaque(view)) {
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

/// One smart render in steps; holds what the two commands share.
class SmartRender {
  public:
    SmartRender(CommandCaller &caller, Host &host, CommandContext context,
                const RenderSettings &settings, LayerPixels &input, LayerPixels *original)
        : caller_(caller),
          host_(host),
          context_(context),
          settings_(settings),
          worlds_(host),
          input_(input),
          original_(original) {
        context_.downsample_x = {1, static_cast<A_u_long>(settings.downsample_x)};
        context_.downsample_y = {1, static_cast<A_u_long>(settings.downsample_y)};
        context_.quality = settings.high_quality ? PF_Quality_HI : PF_Quality_LO;
        context_.frame = &frame_;
        frame_.own = facts(input, context_.pixel_aspect);
        if (original != nullptr) frame_.original = facts(*original, settings.original_aspect);
        frame_.request = settings.request.value_or(whole_layer());
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
    PF_LRect whole_layer() const {
        const Resolution at{settings_.downsample_x, settings_.downsample_y};
        return {0, 0, at.width(input_.full_width), at.height(input_.full_height)};
    }

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
            layer.world = worlds_.input(own ? input_.pixels : original_->pixels, layer.rect,
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
        result_.pixels = worlds_.take(std::exchange(frame_.output, nullptr));
    }

    static constexpr PF_ChannelMask kAllChannels = 15;

    CommandCaller &caller_;
    Host &host_;
    CommandContext context_;
    const RenderSettings &settings_;
    FrameWorlds worlds_;
    const LayerPixels &input_;
    const LayerPixels *original_;
    SmartFrame frame_;
    PF_PreRenderOutput pre_output_{};
    RenderResult result_;
};

}  // namespace

RenderResult smart_render(CommandCaller &caller, Host &host, CommandContext context,
                          const RenderSettings &settings, LayerPixels &input,
                          LayerPixels *original) {
    return SmartRender(caller, host, context, settings, input, original).run();
}

}  // namespace stage
