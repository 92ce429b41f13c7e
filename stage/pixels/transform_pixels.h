// Compositing a world into another through a 3x3 matrix.
#pragma once

#include <optional>

#include "stage/pixels/compositing.h"
#include "stage/pixels/copy_pixels.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// The matrix that maps destination to source, or none when there is nothing to draw: an element is
/// NaN or infinite, or the matrix cannot be inverted. `source_to_destination` says which way
/// `matrix` maps. Row vectors: [x y 1] * M, so the translation is mat[2][0], mat[2][1].
std::optional<PF_FloatMatrix> destination_to_source(const PF_FloatMatrix &matrix,
                                                    bool source_to_destination);

/// Lays `src` over the part of `dst` inside `area`, each destination pixel taking its colour from
/// the source point that `matrix` (destination to source) gives for its centre. Pixel corners are
/// at integers, so the centre of the first pixel is (0.5, 0.5) in both worlds.
///
/// kBilinear weighs the four nearest pixels, transparent ones outside the source, so edges are
/// antialiased; with straight colour the weights include alpha. kNearest takes the pixel that the
/// point falls into. A destination pixel whose samples all lie outside the source stays as it is in
/// every mode, and so does every pixel where a perspective matrix gives no point in front of the
/// viewer. Reductions have no pre-filter. Integer results are rounded once, to the nearest code,
/// halves up; an identity matrix is therefore exact. [host thread]
void transform_pixels(const PixelView &src, const PixelView &dst, const Box &area,
                      const PF_FloatMatrix &matrix, const Compositing &how, Sampling sampling);

}  // namespace stage
