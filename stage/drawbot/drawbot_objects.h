// What stands behind the references of Drawbot.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "stage/drawbot/draw_list.h"

namespace stage {

struct DrawingObject {};   ///< the event's drawing reference
struct SupplierObject {};  ///< the event's, as the surface: never released by an effect
struct SurfaceObject {};

struct PenObject {
    DrawColor color;
    float width = 1;            ///< window pixels
    std::vector<float> dashes;  ///< drawn, left out, drawn, ... pixels
};
struct BrushObject {
    DrawColor color;
};
struct PathObject {
    DrawPath path;
};
struct FontObject {
    float size = 12;  ///< pixels
};
struct ImageObject {
    DrawImage image;
};

using DrawbotObject = std::variant<DrawingObject, SupplierObject, SurfaceObject, PenObject,
                                   BrushObject, PathObject, FontObject, ImageObject>;

/// "pen", in the order of DrawbotObject's alternatives.
inline const char *kind_name(const DrawbotObject &object) {
    constexpr const char *kNames[] = {
        "drawing reference", "supplier", "surface", "pen", "brush", "path", "font", "image"};
    return kNames[object.index()];
}

/// Whether the object lives as long as its event, and is not the effect's to release.
inline bool belongs_to_event(const DrawbotObject &object) {
    return std::holds_alternative<DrawingObject>(object) ||
           std::holds_alternative<SupplierObject>(object) ||
           std::holds_alternative<SurfaceObject>(object);
}

}  // namespace stage
