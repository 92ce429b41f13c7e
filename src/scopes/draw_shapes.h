// Draws a graticule's shapes into a panel.
#pragma once

#include "draw/draw_surface.h"
#include "hostapi/in_out_data.h"
#include "scopes/graticule/shapes.h"

namespace ks {

/// Draws `shapes`, first to last, into `panel` of format `format`: makes a surface of it, draws,
/// releases it. The first error ends the drawing; a surface that was made is released in any case.
/// Returns 0, the surface layer's codes or the host's code on an abort. `scale`: the label scale.
/// [host thread]
PF_Err draw_shapes(PF_InData *in_data, PF_OutData *out_data, PF_PixelFormat format,
                   const PF_EffectWorld &panel, double scale, const ShapeList &shapes);

}  // namespace ks
