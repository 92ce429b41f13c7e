// Owners of the GDI+ objects that a primitive makes, uses and deletes. An object that could not be
// made is null; calls with it are refused by the library and leave their status. [host thread]
#pragma once

#include <memory>

#include "draw/draw_surface.h"
#include "draw/gdiplus_flat.h"

namespace ks::draw {

template <auto Delete>
struct GpDeleter {
    template <class Object>
    void operator()(Object *object) const noexcept {
        Delete(object);
    }
};

using OwnedPen = std::unique_ptr<GpPen, GpDeleter<&GdipDeletePen>>;
using OwnedBrush = std::unique_ptr<GpBrush, GpDeleter<&GdipDeleteBrush>>;
using OwnedFontFamily = std::unique_ptr<GpFontFamily, GpDeleter<&GdipDeleteFontFamily>>;
using OwnedFont = std::unique_ptr<GpFont, GpDeleter<&GdipDeleteFont>>;
using OwnedStringFormat = std::unique_ptr<GpStringFormat, GpDeleter<&GdipDeleteStringFormat>>;
using OwnedGraphics = std::unique_ptr<GpGraphics, GpDeleter<&GdipDeleteGraphics>>;

/// Keeps a status that is not Ok in the surface's graphics object.
inline void note_status(DrawSurface &surface, GpStatus status) {
    if (status != 0) surface.graphics->last_status = status;
}

inline GpGraphics *native_graphics(const DrawSurface &surface) {
    return static_cast<GpGraphics *>(surface.graphics->native);
}

inline OwnedPen make_pen(DrawSurface &surface, const Colour &colour, float width) {
    GpPen *pen = nullptr;
    note_status(surface, GdipCreatePen1(pack_colour(colour), width, kUnitWorld, &pen));
    return OwnedPen(pen);
}

inline OwnedBrush make_solid_brush(DrawSurface &surface, const Colour &colour) {
    GpBrush *brush = nullptr;
    note_status(surface, GdipCreateSolidFill(pack_colour(colour), &brush));
    return OwnedBrush(brush);
}

}  // namespace ks::draw
