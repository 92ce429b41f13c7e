// Turns the vectorscope's counts, or gathered colours, into its trace.
#pragma once

#include "scopes/merge/count_table.h"
#include "scopes/sampling/colour_cell.h"
#include "scopes/sampling/sampler.h"

namespace ks {

/// Monochrome: every pixel is exactly what that many plots of the one colour leave. In the samples'
/// own colours see colour_cell.h; alpha is then that of as many plots of opaque samples as the
/// samples' alphas amount to: equal for opaque pictures.
template <class P>
class VectorscopeMerge {
  public:
    explicit VectorscopeMerge(const Sampler &sampler);

    /// Rows of the clip box.
    [[nodiscard]] int rows() const {
        return plan_.vectorscope.count != 0 ? static_cast<int>(plan_.vectorscope.map.height) : 0;
    }
    /// Draws a row of the clip box. Different rows may be drawn at once. [worker]
    void draw_row(int row) const;

  private:
    void draw_counts(std::size_t first_cell, int count, P *pixels) const;
    void draw_colours(std::size_t first_cell, int count, P *pixels) const;

    const Sampler &sampler_;
    const SamplePlan &plan_;
    const ScopeSampleContext &context_;
    CountTable<P> table_;
};

}  // namespace ks
