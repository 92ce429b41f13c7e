#include "stage/services/utility_callbacks.h"

#include "stage/services/calls/ansi_calls.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/handle_calls.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/calls/pixel_calls.h"
#include "stage/services/calls/world_calls.h"

namespace stage {
namespace {

PF_Err copy(PF_ProgPtr, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_rect,
            PF_Rect *dst_rect) noexcept {
    return calls::copy("utils.copy", calls::CopyQuality::kOfCommand, src, dst, src_rect, dst_rect);
}

PF_Err fill(PF_ProgPtr, const PF_Pixel *colour, const PF_Rect *rect,
            PF_EffectWorld *world) noexcept {
    return calls::fill("utils.fill", colour, rect, world);
}

PF_Err fill16(PF_ProgPtr, const PF_Pixel16 *colour, const PF_Rect *rect,
              PF_EffectWorld *world) noexcept {
    return calls::fill16("utils.fill16", colour, rect, world);
}

PF_Err new_world(PF_ProgPtr, A_long width, A_long height, PF_NewWorldFlags flags,
                 PF_EffectWorld *world) noexcept {
    const bool deep = (flags & PF_NewWorldFlag_DEEP_PIXELS) != 0;
    return calls::new_world("utils.new_world", width, height,
                            (flags & PF_NewWorldFlag_CLEAR_PIXELS) != 0,
                            deep ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32, world);
}

PF_Err dispose_world(PF_ProgPtr, PF_EffectWorld *world) noexcept {
    return calls::dispose_world("utils.dispose_world", world);
}

template <CallName kName, class Pixel>
PF_Err iterate(PF_InData *, A_long, A_long, PF_EffectWorld *src, const PF_Rect *area, void *refcon,
               calls::PixelFunction<Pixel> function, PF_EffectWorld *dst) noexcept {
    return calls::iterate<Pixel>(kName.text, src, area, refcon, function, dst);
}

PF_Err transfer_rect(PF_ProgPtr, PF_Quality, PF_ModeFlags flags, PF_Field, const PF_Rect *src_rect,
                     const PF_EffectWorld *src, const PF_CompositeMode *mode,
                     const PF_MaskWorld *mask, A_long x, A_long y, PF_EffectWorld *dst) noexcept {
    return calls::transfer_rect("utils.transfer_rect", flags, src_rect, src, mode, mask, x, y, dst);
}

PF_Err transform_world(PF_ProgPtr, PF_Quality quality, PF_ModeFlags flags, PF_Field,
                       const PF_EffectWorld *src, const PF_CompositeMode *mode,
                       const PF_MaskWorld *mask, const PF_FloatMatrix *matrices, A_long count,
                       PF_Boolean src2dst, const PF_Rect *dst_rect, PF_EffectWorld *dst) noexcept {
    return calls::transform_world(
        "utils.transform_world",
        {quality, flags, src, mode, mask, matrices, count, src2dst != 0, dst_rect, dst});
}

constexpr PF_UtilCallbacks make_table() {
    PF_UtilCallbacks table{};
    table.begin_sampling = unimplemented<"utils.begin_sampling">;
    table.subpixel_sample = unimplemented<"utils.subpixel_sample">;
    table.area_sample = unimplemented<"utils.area_sample">;
    table.end_sampling = unimplemented<"utils.end_sampling">;
    table.composite_rect = unimplemented<"utils.composite_rect">;
    table.blend = unimplemented<"utils.blend">;
    table.convolve = unimplemented<"utils.convolve">;
    table.copy = copy;
    table.fill = fill;
    table.gaussian_kernel = unimplemented<"utils.gaussian_kernel">;
    table.iterate = iterate<"utils.iterate", PF_Pixel>;
    table.premultiply = unimplemented<"utils.premultiply">;
    table.premultiply_color = unimplemented<"utils.premultiply_color">;
    table.new_world = new_world;
    table.dispose_world = dispose_world;
    table.iterate_origin = unimplemented<"utils.iterate_origin">;
    table.iterate_lut = unimplemented<"utils.iterate_lut">;
    table.transfer_rect = transfer_rect;
    table.transform_world = transform_world;
    table.host_new_handle = [](A_u_longlong size) noexcept {
        return calls::new_handle("utils.host_new_handle", size);
    };
    table.host_lock_handle = [](PF_Handle handle) noexcept {
        return calls::lock_handle("utils.host_lock_handle", handle);
    };
    table.host_unlock_handle = [](PF_Handle handle) noexcept {
        calls::unlock_handle("utils.host_unlock_handle", handle);
    };
    table.host_dispose_handle = [](PF_Handle handle) noexcept {
        calls::dispose_handle("utils.host_dispose_handle", handle);
    };
    table.get_callback_addr = unimplemented<"utils.get_callback_addr">;
    table.ansi = calls::ansi_table<PF_ANSICallbacksBlock, CallName("utils.ansi")>();
    table.get_platform_data = unimplemented<"utils.get_platform_data">;
    table.host_get_handle_size = [](PF_Handle handle) noexcept {
        return calls::handle_size("utils.host_get_handle_size", handle);
    };
    table.iterate_origin_non_clip_src = unimplemented<"utils.iterate_origin_non_clip_src">;
    table.iterate_generic = [](A_long iterations, void *refcon,
                               calls::GenericFunction function) noexcept -> PF_Err {
        return calls::iterate_generic("utils.iterate_generic", iterations, refcon, function);
    };
    table.host_resize_handle = [](A_u_longlong size, PF_Handle *handle) noexcept {
        return calls::resize_handle("utils.host_resize_handle", size, handle);
    };
    table.subpixel_sample16 = unimplemented<"utils.subpixel_sample16">;
    table.area_sample16 = unimplemented<"utils.area_sample16">;
    table.fill16 = fill16;
    table.premultiply_color16 = unimplemented<"utils.premultiply_color16">;
    table.iterate16 = iterate<"utils.iterate16", PF_Pixel16>;
    table.iterate_origin16 = unimplemented<"utils.iterate_origin16">;
    table.iterate_origin_non_clip_src16 = unimplemented<"utils.iterate_origin_non_clip_src16">;
    table.get_pixel_data8 = unimplemented<"utils.get_pixel_data8">;
    table.get_pixel_data16 = unimplemented<"utils.get_pixel_data16">;
    return table;
}

// Not constant: plug-ins get it through a pointer to non-constant.
PF_UtilCallbacks g_table = make_table();

}  // namespace

PF_UtilCallbacks *utility_callbacks() {
    return &g_table;
}

}  // namespace stage
