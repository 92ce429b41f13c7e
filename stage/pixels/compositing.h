// Laying one pixel over another: transfer modes, opacity, straight and premultiplied colour.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "hostapi/constants.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// Alpha, red, green, blue in codes of the depth (0..255, 0..32768, 0..1), not rounded.
using Sample = std::array<double, 4>;

/// A blend function: source and destination colour, 0..1, to the colour where both are opaque.
using BlendFunction = double (*)(double source, double destination);

/// How a source is laid over a destination. Full opacity is 255 at 8 bit and 32768 at 16 bit and
/// float.
struct Compositing {
    enum class Kind { kNothing, kCopy, kBehind, kOver };
    Kind kind = Kind::kOver;
    BlendFunction blend = nullptr;  ///< for kOver; null is plain "in front"
    double opacity = 1;             ///< in codes of full_opacity
    double full_opacity = 1;
    bool straight = true;   ///< colour is not multiplied by alpha
    bool rgb_only = false;  ///< destination alpha stays
};

/// From the host's record. 8-bit worlds take `opacity`, deeper ones `opacitySu`; values above full
/// opacity count as full. None for transfer modes that this host does not carry out: dissolve and
/// everything beyond difference.
std::optional<Compositing> make_compositing(const PF_CompositeMode &mode, PF_ModeFlags flags,
                                            Depth depth);

/// The destination after the source was laid over it, in codes, not rounded.
///
/// With source alpha s (times opacity), destination alpha d, both 0..1, the new alpha is
/// a = s + d * (1 - s) and the colour, all straight,
///
///     in front   (s * cs + d * (1 - s) * cd) / a
///     blended    the same with cs replaced by (1 - d) * cs + d * B(cs, cd)
///     behind     (d * cd + s * (1 - d) * cs) / a
///     copy       s and d weighted by opacity and 1 - opacity: a = o * s + (1 - o) * d
///
/// Premultiplied colour follows from the same formulas without the division. Computed in double on
/// the codes, so 8-bit results rounded to the nearest code, halves up, are the exact quotient
/// rounded. An opaque source at full opacity in front is taken over exactly, and a transparent one
/// (or opacity 0) leaves a straight destination exactly. Where the new alpha is 0 the destination's
/// colour stays. Blend results are clamped to 0..1 at the integer depths only.
template <Depth kDepth>
Sample composite(const Compositing &how, const Sample &source, const Sample &destination);

extern template Sample composite<Depth::U8>(const Compositing &, const Sample &, const Sample &);
extern template Sample composite<Depth::U16>(const Compositing &, const Sample &, const Sample &);
extern template Sample composite<Depth::Float>(const Compositing &, const Sample &, const Sample &);

/// True when a source pixel of alpha `alpha` (codes) simply replaces the destination.
template <Depth kDepth>
bool replaces(const Compositing &how, double alpha) {
    return how.opacity == how.full_opacity && !how.rgb_only &&
           (how.kind == Compositing::Kind::kCopy ||
            (how.kind == Compositing::Kind::kOver && how.blend == nullptr &&
             alpha == DepthTraits<kDepth>::kWhite));
}

template <class Pixel>
Sample sample_of(const Pixel &pixel) {
    return {static_cast<double>(pixel.alpha), static_cast<double>(pixel.red),
            static_cast<double>(pixel.green), static_cast<double>(pixel.blue)};
}
template <Depth kDepth>
typename DepthTraits<kDepth>::Pixel pixel_of(const Sample &sample) {
    return {to_channel<kDepth>(sample[0]), to_channel<kDepth>(sample[1]),
            to_channel<kDepth>(sample[2]), to_channel<kDepth>(sample[3])};
}

}  // namespace stage
