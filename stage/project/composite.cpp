#include "stage/project/composite.h"

#include <fmt/format.h>

#include <utility>

#include "stage/project/layer_raster.h"

namespace stage {
namespace {

double pixel_aspect(const Item &item) {
    return static_cast<double>(item.par_num) / item.par_den;
}

/// Exactly 1 for equal aspects, also where they are written differently (2/2 and 1/1).
double relative_aspect(const Item &source, const Item &comp) {
    return static_cast<double>(std::int64_t{source.par_num} * comp.par_den) /
           static_cast<double>(std::int64_t{source.par_den} * comp.par_num);
}

/// True when drawing `picture` on an empty target of that size would give the picture itself.
bool replaces_empty(const Picture &picture, const Placement &placement, int width, int height) {
    int left = 0;
    int top = 0;
    return picture.width == width && picture.height == height && placement.opacity >= 1.0f &&
           lands_on_pixels(picture.width, picture.height, placement, &left, &top) && left == 0 &&
           top == 0;
}

Picture draw_layers(const Project &project, const Item &comp, int below, bool nested,
                    std::int64_t frame, Resolution resolution) {
    const int width = resolution.width(comp.width);
    const int height = resolution.height(comp.height);
    Picture target;
    bool empty = true;
    for (int i = static_cast<int>(comp.layers.size()) - 1; i > below && i >= 0; --i) {
        const Layer &layer = comp.layers[static_cast<std::size_t>(i)];
        const Item *source = project.item(layer.source);
        if (source == nullptr || !is_drawn(layer, nested)) continue;
        Picture picture = item_picture(project, source->id, frame, resolution);
        const Placement placement = placement_of(layer, *source, comp, resolution);
        if (empty && replaces_empty(picture, placement, width, height)) {
            target = std::move(picture);
        } else {
            if (empty) target = make_picture(width, height, SampleType::Float);
            draw_over(target, picture, placement);
        }
        empty = false;
    }
    if (empty) target = make_picture(width, height, SampleType::Float);
    target.pixel_aspect = pixel_aspect(comp);
    return target;
}

Picture solid_picture(const Item &item, Resolution resolution) {
    Picture picture = make_picture(resolution.width(item.width), resolution.height(item.height),
                                   SampleType::Float);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = static_cast<float>(item.color[i % 4]);
    }
    return picture;
}

Picture footage_picture(const Item &item, std::int64_t frame) {
    if (!item.reader) throw PictureError(item.name + ": the footage is not open");
    const bool still = item.frames == 1;
    if (!still && (frame < 0 || frame >= item.frames)) {
        return make_picture(item.width, item.height, SampleType::Float);
    }
    Picture picture = item.reader(still ? 0 : frame);
    check_picture(picture);
    if (picture.width != item.width || picture.height != item.height) {
        throw PictureError(fmt::format("{}: frame {} is {}x{} instead of {}x{}", item.name, frame,
                                       picture.width, picture.height, item.width, item.height));
    }
    return picture;
}

}  // namespace

bool is_drawn(const Layer &layer, bool nested) {
    if (!layer.has_flag(layer_flag::kVideoActive) || layer.source == 0) return false;
    if (layer.has_flag(layer_flag::kAdjustment) || layer.has_flag(layer_flag::kNull)) return false;
    if (nested && layer.has_flag(layer_flag::kGuide)) return false;
    return opacity_of(layer) > 0.0f;
}

float opacity_of(const Layer &layer) {
    if (!(layer.opacity > 0)) return 0.0f;
    return layer.opacity >= 100 ? 1.0f : static_cast<float>(layer.opacity / 100);
}

Placement placement_of(const Layer &layer, const Item &source, const Item &comp,
                       Resolution resolution) {
    const double scale = layer.scale / 100;
    Placement placement{layer.position_x, layer.position_y, scale * relative_aspect(source, comp),
                        scale, opacity_of(layer)};
    // The last block of a row may be cut off, so it is the left edge that keeps its place.
    const auto reduced = [](double center, double factor, int full, int size, int divisor) {
        return (center - full / 2.0 * factor) / divisor + size / 2.0 * factor;
    };
    if (resolution.x != 1) {
        placement.center_x = reduced(placement.center_x, placement.scale_x, source.width,
                                     resolution.width(source.width), resolution.x);
    }
    if (resolution.y != 1) {
        placement.center_y = reduced(placement.center_y, placement.scale_y, source.height,
                                     resolution.height(source.height), resolution.y);
    }
    return placement;
}

Picture composite(const Project &project, const StackPart &part, std::int64_t frame,
                  Resolution resolution) {
    const Item *item = project.comp(part.comp);
    if (item == nullptr) throw ProjectError("there is no composition " + std::to_string(part.comp));
    return draw_layers(project, *item, part.below, part.nested, frame, resolution);
}

Picture composite(const Project &project, ItemId comp, int below_layer_index, std::int64_t frame) {
    return composite(project, {comp, below_layer_index, false}, frame, {});
}

Picture item_picture(const Project &project, ItemId item, std::int64_t frame,
                     Resolution resolution) {
    const Item *found = project.item(item);
    if (found == nullptr) throw ProjectError("there is no item " + std::to_string(item));
    Picture picture;
    switch (found->kind) {
        case ItemKind::kComp:
            return draw_layers(project, *found, -1, true, frame, resolution);
        case ItemKind::kSolid:
            picture = solid_picture(*found, resolution);
            break;
        case ItemKind::kFootage:
            picture = footage_picture(*found, frame);
            if (resolution != Resolution{})
                picture = downsampled(picture, resolution.x, resolution.y);
            break;
    }
    picture.pixel_aspect = pixel_aspect(*found);
    return picture;
}

}  // namespace stage
