#include "render/view_callbacks.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

#include "hostapi/constants.h"
#include "pixels/depth.h"
#include "pixels/views.h"

namespace ks {
namespace {

/// The RGB or alpha view of an 8-bit pixel from the record's table.
template <View V>
Pixel8 look_up(Pixel8 in, const std::array<std::uint8_t, 256> &codes) {
    if constexpr (V == View::kAlpha) {
        const std::uint8_t value = codes[in.alpha];
        return {255, value, value, value};
    } else {
        return {in.alpha, codes[in.red], codes[in.green], codes[in.blue]};
    }
}

/// Converts one pixel. `P` is our pixel type, `HostPixel` the host's of the same depth.
template <View V, class P, class HostPixel>
PF_Err convert_pixel(void *refcon, A_long, A_long, HostPixel *in, HostPixel *out) {
    const auto &record = *static_cast<const ConversionRecord *>(refcon);
    static_assert(sizeof(P) == sizeof(HostPixel));
    P pixel;
    std::memcpy(&pixel, in, sizeof pixel);
    if constexpr (std::is_same_v<P, Pixel8> && has_code_table(V)) {
        pixel = look_up<V>(pixel, record.corrected_codes);
    } else {
        pixel = store_lanes<P>(convert_view<V>(load_lanes(pixel), record));
    }
    std::memcpy(out, &pixel, sizeof pixel);
    return PF_Err_NONE;
}

template <class P, class HostPixel, std::size_t... I>
auto callback_for(std::int32_t view_mode, std::index_sequence<I...>) {
    using Callback = PF_Err (*)(void *, A_long, A_long, HostPixel *, HostPixel *);
    static constexpr std::array<Callback, sizeof...(I)> kCallbacks{
        &convert_pixel<static_cast<View>(I), P, HostPixel>...};
    const bool known = view_mode > 0 && view_mode < kViewCount;
    return kCallbacks[known ? static_cast<std::size_t>(view_mode) : 0];
}

using Views = std::make_index_sequence<kViewCount>;

}  // namespace

PF_IteratePixel8Func view_callback_8(std::int32_t view_mode) {
    return callback_for<Pixel8, PF_Pixel>(view_mode, Views{});
}

PF_IteratePixel16Func view_callback_16(std::int32_t view_mode) {
    return callback_for<Pixel16, PF_Pixel16>(view_mode, Views{});
}

PF_IteratePixelFloatFunc view_callback_float(std::int32_t view_mode) {
    return callback_for<PixelF, PF_PixelFloat>(view_mode, Views{});
}

}  // namespace ks
