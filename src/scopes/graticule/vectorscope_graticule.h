// The vectorscope's graticule: outline, skin-tone line, reference line, targets or hue vectors. No
// host types.
#pragma once

#include <cstdint>
#include <optional>

#include "geometry/frame_scale.h"
#include "scopes/context/sample_context.h"
#include "scopes/graticule/shapes.h"

namespace ks {

/// "Graticule Layout".
enum class VectorscopeLayout : std::int32_t { kRegular = 1, kHueVectors = 2 };

struct VectorscopeOptions {
    VectorscopeLayout layout = VectorscopeLayout::kRegular;
    bool skin_tone_line = false;
    std::optional<Colour> reference;  ///< colour of the reference line, none without the line
};

/// Appends the graticule in the clip box of `context`. Angles are right on screen, whatever the
/// pixels' shape: they are placed as the samples are. [host thread]
void add_vectorscope_graticule(ShapeList &shapes, const ScopeSampleContext &context,
                               const FrameScale &frame, const VectorscopeOptions &options);

}  // namespace ks
