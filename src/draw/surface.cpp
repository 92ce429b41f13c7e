#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "draw/draw_surface.h"
#include "draw/gdiplus_flat.h"
#include "draw/gdiplus_objects.h"
#include "host/host_world.h"
#include "host/scoped.h"
#include "host/suite_cache.h"
#include "hostapi/constants.h"
#include "pixels/raster_copy.h"

namespace ks::draw {
namespace {

constexpr char kNoRaster[] = "ksDrawSuite: Bitmap memory not allocated";
constexpr char kRasterNotLocked[] = "ksDrawSuite: Could not lock bitmap memory";
constexpr char kNoBitmapMemory[] = "ksDrawSuite: GDI+ Bitmap memory not allocated";
constexpr char kBitmapException[] = "ksDrawSuite: Exception creating GDI+ Bitmap";
constexpr char kNoGraphicsMemory[] = "ksDrawSuite: GDI+ Graphics memory not allocated";
constexpr char kGraphicsException[] = "ksDrawSuite: Exception creating GDI+ Graphics";
constexpr char kNoGraphics[] = "ksDrawSuite: GDI+ context not created";

// How a step ended, and what the user is told about it.
struct Outcome {
    PF_Err code = PF_Err_NONE;
    const char *message = nullptr;
};

void show(PF_InData *in_data, PF_OutData *out_data, const char *message) {
    if (message == nullptr) return;
    in_data->utils->ansi.sprintf(out_data->return_msg, message);
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
}

// The GDI+ bitmap over the raster, kept in host memory. Its status is kept like that of the
// graphics object and not looked at: without an image, there is no graphics, and drawing has no
// effect.
struct BitmapObject {
    GpImage *native = nullptr;
    GpStatus last_status = 0;
    GpStatus load_status = 0;  // of pictures read from files
    void *reserved = nullptr;

    BitmapObject(IntSize size, std::int32_t stride, std::uint8_t *raster) {
        last_status = GdipCreateBitmapFromScan0(size.width, size.height, stride,
                                                kPixelFormat32bppPARGB, raster, &native);
    }
    ~BitmapObject() {
        if (native != nullptr) GdipDisposeImage(native);
    }
    BitmapObject(const BitmapObject &) = delete;
    BitmapObject &operator=(const BitmapObject &) = delete;
};
static_assert(sizeof(BitmapObject) == 24);

struct DestroyInPlace {
    void operator()(BitmapObject *bitmap) const { bitmap->~BitmapObject(); }
};

// Width and height of the raster: those of the world, none of them negative.
IntSize raster_size(const PF_EffectWorld &world) {
    const bool empty = world.width <= 0 || world.height <= 0;
    return empty ? IntSize{} : IntSize{world.width, world.height};
}

void set_rendering_modes(DrawSurface &surface, PF_Quality quality) {
    GpGraphics *const graphics = native_graphics(surface);
    const bool high = quality == PF_Quality_HI;
    note_status(surface, GdipSetCompositingMode(graphics, kCompositingModeSourceOver));
    note_status(surface, GdipSetCompositingQuality(graphics, high ? kCompositingQualityHighQuality
                                                                  : kCompositingQualityHighSpeed));
    note_status(surface, GdipSetSmoothingMode(
                             graphics, high ? kSmoothingModeHighQuality : kSmoothingModeHighSpeed));
    note_status(surface,
                GdipSetTextRenderingHint(graphics, high ? kTextRenderingHintAntiAlias
                                                        : kTextRenderingHintSystemDefault));
}

// Puts a graphics object on `bitmap` into new host memory, which stays locked. Without a lock, the
// surface stays without graphics and nothing is held.
Outcome open_graphics(PF_HandleSuite1 &handles, const BitmapObject &bitmap, DrawSurface &surface) {
    OwnedHandle memory(handles, sizeof(GraphicsObject));
    if (memory.get() == nullptr) return {PF_Err_OUT_OF_MEMORY, kNoGraphicsMemory};
    void *const place = handles.host_lock_handle(memory.get());
    if (place == nullptr) return {};
    GraphicsObject *const graphics = new (place) GraphicsObject;
    try {
        GpGraphics *native = nullptr;
        graphics->last_status = GdipGetImageGraphicsContext(bitmap.native, &native);
        graphics->native = native;
    } catch (...) {
        handles.host_unlock_handle(memory.get());
        return {PF_Err_INTERNAL_STRUCT_DAMAGED, kGraphicsException};
    }
    surface.graphics = graphics;
    surface.graphics_memory = memory.release();
    return {};
}

// Opens GDI+ on the raster. The bitmap deliberately ends here: drawing goes on through the graphics
// object into the raster, which is the surface's.
Outcome open_gdiplus(PF_HandleSuite1 &handles, IntSize size, std::uint8_t *raster,
                     DrawSurface &surface) {
    const OwnedHandle memory(handles, sizeof(BitmapObject));
    if (memory.get() == nullptr) return {PF_Err_OUT_OF_MEMORY, kNoBitmapMemory};
    const LockedHandle<void> place(handles, memory.get());
    if (place.get() == nullptr) return {PF_Err_OUT_OF_MEMORY, kNoBitmapMemory};
    std::unique_ptr<BitmapObject, DestroyInPlace> bitmap;
    try {
        bitmap.reset(new (place.get()) BitmapObject(size, size.width * 4, raster));
    } catch (...) {
        return {PF_Err_INTERNAL_STRUCT_DAMAGED, kBitmapException};
    }
    return open_graphics(handles, *bitmap, surface);
}

Outcome build(PF_HandleSuite1 &handles, PF_Quality quality, DrawSurface &surface) {
    const IntSize size = raster_size(surface.world);
    const std::int64_t stride = std::int64_t{size.width} * 4;
    // No host has rows beyond what GDI+ can address; none is made for them either.
    if (stride > std::numeric_limits<std::int32_t>::max()) return {PF_Err_OUT_OF_MEMORY, kNoRaster};
    // Hosts differ on handles without bytes, so that a world without pixels gets one pixel's.
    OwnedHandle raster(handles,
                       static_cast<A_HandleSize>(std::max<std::int64_t>(stride * size.height, 4)));
    if (raster.get() == nullptr) return {PF_Err_OUT_OF_MEMORY, kNoRaster};
    const LockedHandle<std::uint8_t> pixels(handles, raster.get());
    if (pixels.get() == nullptr) return {PF_Err_OUT_OF_MEMORY, kRasterNotLocked};

    const PF_Err copied = copy_to_raster(surface.format, view_of(surface.world), pixels.get());
    if (copied != PF_Err_NONE) return {copied, nullptr};
    const Outcome opened = open_gdiplus(handles, size, pixels.get(), surface);
    if (opened.code != PF_Err_NONE) return opened;
    if (surface.graphics == nullptr) return {PF_Err_INTERNAL_STRUCT_DAMAGED, kNoGraphics};
    set_rendering_modes(surface, quality);
    surface.raster = raster.release();
    return {};
}

Outcome copy_back(const DrawSurface &surface, const std::uint8_t *raster) {
    if (raster == nullptr) return {PF_Err_OUT_OF_MEMORY, kRasterNotLocked};
    return {copy_from_raster(surface.format, raster, view_of(surface.world)), nullptr};
}

void free_graphics_memory(PF_HandleSuite1 &handles, DrawSurface &surface) {
    if (surface.graphics_memory == nullptr) return;
    handles.host_unlock_handle(surface.graphics_memory);
    handles.host_dispose_handle(surface.graphics_memory);
    surface.graphics_memory = nullptr;
    surface.graphics = nullptr;
}

}  // namespace

DrawSurface describe_surface(const PF_InData &in_data, PF_PixelFormat format,
                             const PF_EffectWorld &world, double scale) {
    DrawSurface surface;
    surface.format = format;
    surface.world = world;
    const FrameScale frame = frame_scale_of(in_data);
    surface.den_x = frame.den_x;
    surface.den_y = frame.den_y;
    surface.pixel_aspect = frame.pixel_aspect;
    surface.scale = scale;
    return surface;
}

PF_Err create_surface(PF_InData *in_data, PF_OutData *out_data, DrawSurface &surface) {
    auto suites = std::make_unique<SuiteCache>(in_data->pica_basicP);
    const PF_Err aborted = in_data->inter.abort(in_data->effect_ref);
    if (aborted != PF_Err_NONE) return aborted;
    const Outcome outcome = build(suites->handle(), in_data->quality, surface);
    if (outcome.code == PF_Err_NONE) surface.suites = std::move(suites);
    show(in_data, out_data, outcome.message);
    return outcome.code;
}

PF_Err release_surface(PF_InData *in_data, PF_OutData *out_data, DrawSurface &surface) {
    Outcome outcome{in_data->inter.abort(in_data->effect_ref), nullptr};
    if (surface.raster == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;

    OwnedGraphics graphics(surface.graphics != nullptr ? native_graphics(surface) : nullptr);
    PF_HandleSuite1 &handles = surface.suites->handle();  // acquired at creation
    std::optional<LockedHandle<std::uint8_t>> pixels;
    if (outcome.code == PF_Err_NONE) {
        pixels.emplace(handles, surface.raster);
        outcome = copy_back(surface, pixels->get());
    }
    graphics.reset();
    free_graphics_memory(handles, surface);
    pixels.reset();
    handles.host_dispose_handle(surface.raster);
    surface.raster = nullptr;
    surface.suites.reset();
    show(in_data, out_data, outcome.message);
    return outcome.code;
}

}  // namespace ks::draw
