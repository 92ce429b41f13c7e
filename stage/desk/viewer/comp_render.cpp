#include "stage/desk/viewer/comp_render.h"

#include <chrono>
#include <string>
#include <utility>

#include "stage/desk/viewer/layer_pixels.h"
#include "stage/project/composite.h"
#include "stage/session/session.h"

namespace stage {
namespace {

/// Renders layers of one frame and notes how their effects fared.
class FrameRender {
  public:
    FrameRender(Session &session, const RenderSettings &settings,
                std::vector<EffectOutcome> &outcomes)
        : session_(session),
          project_(session.project()),
          pool_(session.pool()),
          depth_(session.options().depth),
          outcomes_(outcomes) {
        settings_.frame = settings.frame;
        settings_.downsample_x = resolution_.x = settings.downsample_x;
        settings_.downsample_y = resolution_.y = settings.downsample_y;
        settings_.high_quality = settings.high_quality;
    }

    LayerPixels comp(const Item &comp, bool nested) {
        const int first = lowest_effect(comp, nested);
        LayerPixels canvas = session_.inputs.stack(project_, {comp.id, first, nested},
                                                   settings_.frame, resolution_, depth_);
        for (int i = first; i >= 0; --i) {
            add_layer(canvas, comp, comp.layers[static_cast<std::size_t>(i)], nested);
        }
        return canvas;
    }

    /// The layer's source with its effects.
    LayerPixels layer(const Layer &layer) {
        const Item *source = project_.item(layer.source);
        if (source == nullptr) throw ProjectError(layer.name + ": the layer has no source");
        return with_effects(layer, source_pixels(*source));
    }

  private:
    EffectInstance *running(const Layer &layer, std::size_t effect) const {
        return session_.instance_at(layer.id, static_cast<int>(effect));
    }

    static bool takes_part(const Layer &layer, bool nested) {
        if (!layer.has_flag(layer_flag::kVideoActive) || layer.has_flag(layer_flag::kNull)) {
            return false;
        }
        return !(nested && layer.has_flag(layer_flag::kGuide)) && opacity_of(layer) > 0.0f;
    }

    bool has_effects(const Layer &layer) const {
        for (std::size_t i = 0; i < layer.effects.size(); ++i) {
            if (running(layer, i) != nullptr) return true;
        }
        return false;
    }

    /// Index of the lowest layer that some effect changes, its own or one inside its comp; -1.
    int lowest_effect(const Item &comp, bool nested) const {
        for (int i = static_cast<int>(comp.layers.size()) - 1; i >= 0; --i) {
            const Layer &layer = comp.layers[static_cast<std::size_t>(i)];
            if (!takes_part(layer, nested)) continue;
            if (has_effects(layer)) return i;
            const Item *source = project_.comp(layer.source);
            if (source != nullptr && lowest_effect(*source, true) >= 0) return i;
        }
        return -1;
    }

    LayerPixels source_pixels(const Item &source) {
        if (source.kind == ItemKind::kComp && lowest_effect(source, true) >= 0) {
            return comp(source, true);
        }
        return session_.inputs.item(project_, source.id, settings_.frame, resolution_, depth_);
    }

    LayerPixels with_effects(const Layer &layer, LayerPixels pixels) {
        for (std::size_t i = 0; i < layer.effects.size(); ++i) {
            if (EffectInstance *instance = running(layer, i)) apply(*instance, pixels);
        }
        return pixels;
    }

    void apply(EffectInstance &instance, LayerPixels &pixels) {
        RenderResult result = session_.render_pixels(instance, settings_, pixels);
        const bool usable = result.error == 0 && !result.pixels.empty();
        outcomes_.push_back(
            {&instance, result.error, result.skipped, std::move(result.message), result.seconds});
        if (!usable) return;
        pixels.pixels = whole_layer(result, pixels);
        pixels.opaque.reset();
        pixels.nothing = false;
    }

    /// The result in a picture of the layer's size: transparent where it does not reach.
    HostPixels whole_layer(const RenderResult &result, const LayerPixels &pixels) {
        const int width = resolution_.width(pixels.full_width);
        const int height = resolution_.height(pixels.full_height);
        const HostPixels &made = result.pixels;
        const int left = result.result_rect.left, top = result.result_rect.top;
        if (left == 0 && top == 0 && made.width == width && made.height == height) return made;
        HostPixels whole = clear_host_pixels(width, height, depth_, pool_);
        const Placement place{left + made.width / 2.0, top + made.height / 2.0, 1, 1, 1.0f};
        draw_over(whole.view(), made.view(), place);
        return whole;
    }

    void add_layer(LayerPixels &canvas, const Item &comp, const Layer &layer, bool nested) {
        if (!takes_part(layer, nested)) return;
        const Item *source = project_.item(layer.source);
        if (source == nullptr) {
            note_without_picture(layer);
        } else if (layer.has_flag(layer_flag::kAdjustment)) {
            if (has_effects(layer)) adjust(canvas, layer, *source, comp);
        } else {
            lay(canvas, with_effects(layer, source_pixels(*source)),
                placement_of(layer, *source, comp, resolution_));
        }
    }

    void note_without_picture(const Layer &layer) {
        for (std::size_t i = 0; i < layer.effects.size(); ++i) {
            if (EffectInstance *instance = running(layer, i)) {
                outcomes_.push_back({instance, 0, true, "", 0});
            }
        }
    }

    static bool fills(const HostPixels &canvas, const HostPixels &layer,
                      const Placement &placement) {
        int left = 0, top = 0;
        return layer.width == canvas.width && layer.height == canvas.height &&
               lands_on_pixels(layer.width, layer.height, placement, &left, &top) && left == 0 &&
               top == 0;
    }

    void lay(LayerPixels &canvas, LayerPixels layer, const Placement &placement) {
        const bool replaces = placement.opacity >= 1.0f &&
                              fills(canvas.pixels, layer.pixels, placement) &&
                              (canvas.nothing || layer.is_opaque());
        if (replaces) {
            canvas.pixels = layer.pixels;
            canvas.opaque = layer.opaque;
        } else {
            draw_over(canvas.pixels.writable(pool_), layer.pixels.view(), placement);
            if (canvas.opaque != true) canvas.opaque.reset();
        }
        canvas.nothing = false;
    }

    void adjust(LayerPixels &canvas, const Layer &layer, const Item &source, const Item &comp) {
        const Placement placement = placement_of(layer, source, comp, resolution_);
        LayerPixels beneath = canvas;
        beneath.full_width = source.width;
        beneath.full_height = source.height;
        const int width = resolution_.width(source.width);
        const int height = resolution_.height(source.height);
        const bool whole = source.width == comp.width && source.height == comp.height &&
                           fills(canvas.pixels, canvas.pixels, placement);
        if (!whole) {
            beneath.pixels = seen_from_layer(canvas.pixels, width, height, placement, pool_);
            beneath.opaque.reset();
        }
        const LayerPixels adjusted = with_effects(layer, beneath);
        if (adjusted.pixels.data == beneath.pixels.data) return;  // handed through
        if (whole && placement.opacity >= 1.0f) {
            canvas = adjusted;
        } else {
            replace_covered(canvas.pixels.writable(pool_), adjusted.pixels.view(), placement,
                            pool_);
            canvas.opaque.reset();
            canvas.nothing = false;
        }
    }

    Session &session_;
    const Project &project_;
    BytePool &pool_;
    Depth depth_;
    RenderSettings settings_;
    Resolution resolution_;
    std::vector<EffectOutcome> &outcomes_;
};

/// `render` gives the pixels to show.
template <class Render>
void fill_frame(Session &session, const RenderSettings &settings, ViewFrame &frame,
                Render &&render) {
    const auto begin = std::chrono::steady_clock::now();
    frame.effects.clear();
    FrameRender frame_render(session, settings, frame.effects);
    const LayerPixels shown = render(frame_render);
    show_over_black(shown.pixels.view(), frame.image);
    frame.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

void render_comp(Session &session, ItemId comp, const RenderSettings &settings, ViewFrame &frame) {
    const Item *item = session.project().comp(comp);
    if (item == nullptr) throw ProjectError("there is no composition " + std::to_string(comp));
    fill_frame(session, settings, frame,
               [&](FrameRender &render) { return render.comp(*item, false); });
}

ViewFrame render_comp(Session &session, ItemId comp, const RenderSettings &settings) {
    ViewFrame frame;
    render_comp(session, comp, settings, frame);
    return frame;
}

void render_layer(Session &session, LayerId layer, const RenderSettings &settings,
                  ViewFrame &frame) {
    const Layer *found = session.project().layer(layer);
    if (found == nullptr) throw ProjectError("there is no layer " + std::to_string(layer));
    fill_frame(session, settings, frame, [&](FrameRender &render) { return render.layer(*found); });
}

ViewFrame render_layer(Session &session, LayerId layer, const RenderSettings &settings) {
    ViewFrame frame;
    render_layer(session, layer, settings, frame);
    return frame;
}

}  // namespace stage
