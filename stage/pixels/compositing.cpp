#include "stage/pixels/compositing.h"

#include <algorithm>
#include <cmath>

namespace stage {
namespace {

double add(double s, double d) {
    return s + d;
}
double multiply(double s, double d) {
    return s * d;
}
double screen(double s, double d) {
    return s + d - s * d;
}
double hard_light(double s, double d) {
    return s <= 0.5 ? multiply(2 * s, d) : screen(2 * s - 1, d);
}
double overlay(double s, double d) {
    return hard_light(d, s);
}
// The usual two-part curve: a quartic start below a quarter, the square root above it.
double soft_light(double s, double d) {
    if (s <= 0.5) return d - (1 - 2 * s) * d * (1 - d);
    const double lifted = d <= 0.25 ? ((16 * d - 12) * d + 4) * d : std::sqrt(d);
    return d + (2 * s - 1) * (lifted - d);
}
double darken(double s, double d) {
    return std::min(s, d);
}
double lighten(double s, double d) {
    return std::max(s, d);
}
double difference(double s, double d) {
    return std::fabs(s - d);
}

struct Mode {
    PF_TransferMode number;
    Compositing::Kind kind;
    BlendFunction blend;
};
using Kind = Compositing::Kind;
constexpr Mode kModes[] = {
    {PF_Xfer_NONE, Kind::kNothing, nullptr},
    {PF_Xfer_COPY, Kind::kCopy, nullptr},
    {PF_Xfer_BEHIND, Kind::kBehind, nullptr},
    {PF_Xfer_IN_FRONT, Kind::kOver, nullptr},
    {PF_Xfer_ADD, Kind::kOver, add},
    {PF_Xfer_MULTIPLY, Kind::kOver, multiply},
    {PF_Xfer_SCREEN, Kind::kOver, screen},
    {PF_Xfer_OVERLAY, Kind::kOver, overlay},
    {PF_Xfer_SOFT_LIGHT, Kind::kOver, soft_light},
    {PF_Xfer_HARD_LIGHT, Kind::kOver, hard_light},
    {PF_Xfer_DARKEN, Kind::kOver, darken},
    {PF_Xfer_LIGHTEN, Kind::kOver, lighten},
    {PF_Xfer_DIFFERENCE, Kind::kOver, difference},
};

// Shares of source and destination in the result, in units of full opacity * white * white:
// products of 8-bit codes, exact in double. Their sum is the new alpha.
struct Shares {
    double source, destination;
    double alpha() const { return source + destination; }
};

template <Depth kDepth>
Shares shares_of(const Compositing &how, double source_alpha, double destination_alpha) {
    constexpr double kWhite = DepthTraits<kDepth>::kWhite;
    const double s = source_alpha * how.opacity;
    const double unit = how.full_opacity * kWhite;
    switch (how.kind) {
        case Kind::kCopy:
            return {s * kWhite, destination_alpha * (how.full_opacity - how.opacity) * kWhite};
        case Kind::kBehind:
            return {s * (kWhite - destination_alpha), destination_alpha * unit};
        default:
            return {s * kWhite, destination_alpha * (unit - s)};
    }
}

// a * x + b * y without the side whose weight is 0, so that a NaN or infinity in a colour that does
// not show stays out.
double weighted(double a, double x, double b, double y) {
    if (b == 0) return a * x;
    return a == 0 ? b * y : a * x + b * y;
}

// Source colour once blended with the part of the destination that lies under it; straight, codes.
template <Depth kDepth>
double blended(BlendFunction blend, double source, double destination, double destination_alpha) {
    constexpr double kWhite = DepthTraits<kDepth>::kWhite;
    double mixed = blend(source / kWhite, destination / kWhite) * kWhite;
    if constexpr (DepthTraits<kDepth>::kInteger) mixed = std::clamp(mixed, 0.0, kWhite);
    return weighted(kWhite - destination_alpha, source, destination_alpha, mixed) / kWhite;
}

template <Depth kDepth>
Sample composite_straight(const Compositing &how, const Sample &source, const Sample &destination,
                          const Shares &shares) {
    Sample result = destination;
    for (std::size_t c = 1; c < 4; ++c) {
        const double colour =
            how.blend == nullptr
                ? source[c]
                : blended<kDepth>(how.blend, source[c], destination[c], destination[0]);
        result[c] =
            weighted(shares.source, colour, shares.destination, destination[c]) / shares.alpha();
    }
    return result;
}

// Premultiplied colour over alpha; where alpha is 0 there is nothing to divide by.
template <Depth kDepth>
double straightened(double colour, double alpha) {
    return alpha == 0 ? colour : colour * DepthTraits<kDepth>::kWhite / alpha;
}

template <Depth kDepth>
Sample composite_premultiplied(const Compositing &how, const Sample &source,
                               const Sample &destination) {
    constexpr double kWhite = DepthTraits<kDepth>::kWhite;
    const double unit = how.full_opacity * kWhite;
    double share = how.opacity * kWhite, rest = unit - source[0] * how.opacity;
    if (how.kind == Kind::kCopy) rest = unit - share;
    if (how.kind == Kind::kBehind) {
        share = how.opacity * (kWhite - destination[0]);
        rest = unit;
    }
    Sample result = destination;
    for (std::size_t c = 1; c < 4; ++c) {
        double colour = source[c];
        if (how.blend != nullptr) {
            colour = blended<kDepth>(how.blend, straightened<kDepth>(source[c], source[0]),
                                     straightened<kDepth>(destination[c], destination[0]),
                                     destination[0]) *
                     source[0] / kWhite;
        }
        result[c] = weighted(share, colour, rest, destination[c]) / unit;
    }
    return result;
}

}  // namespace

std::optional<Compositing> make_compositing(const PF_CompositeMode &mode, PF_ModeFlags flags,
                                            Depth depth) {
    const auto *known = std::find_if(std::begin(kModes), std::end(kModes),
                                     [&](const Mode &m) { return m.number == mode.xfer; });
    if (known == std::end(kModes)) return std::nullopt;
    Compositing how;
    how.kind = known->kind;
    how.blend = known->blend;
    how.full_opacity = depth == Depth::U8 ? kWhite8 : kWhite16;
    how.opacity =
        std::min<double>(depth == Depth::U8 ? mode.opacity : mode.opacitySu, how.full_opacity);
    how.straight = (flags & PF_MF_Alpha_STRAIGHT) != 0;
    how.rgb_only = mode.rgb_only != 0;
    return how;
}

template <Depth kDepth>
Sample composite(const Compositing &how, const Sample &source, const Sample &destination) {
    if (how.kind == Kind::kNothing || how.opacity == 0) return destination;
    if (replaces<kDepth>(how, source[0])) return source;
    const Shares shares = shares_of<kDepth>(how, source[0], destination[0]);
    if (how.straight && shares.source == 0 && how.kind != Kind::kCopy) return destination;
    Sample result = destination;
    if (!how.straight) {
        result = composite_premultiplied<kDepth>(how, source, destination);
    } else if (shares.alpha() != 0) {
        result = composite_straight<kDepth>(how, source, destination, shares);
    }
    const double unit = how.full_opacity * DepthTraits<kDepth>::kWhite;
    result[0] = how.rgb_only ? destination[0] : shares.alpha() / unit;
    return result;
}

template Sample composite<Depth::U8>(const Compositing &, const Sample &, const Sample &);
template Sample composite<Depth::U16>(const Compositing &, const Sample &, const Sample &);
template Sample composite<Depth::Float>(const Compositing &, const Sample &, const Sample &);

}  // namespace stage
