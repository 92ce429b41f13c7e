#include "geometry/scope_panel.h"

namespace ks {

std::optional<float> fixed_scope_aspect(int choice) {
    switch (choice) {
        case 2:
            return 0.5625f;
        case 3:
            return 0.75f;
        case 4:
            return 1.0f;
        default:
            return std::nullopt;
    }
}

double scope_aspect(int choice, IntSize output, const FrameScale &scale) {
    if (const auto fixed = fixed_scope_aspect(choice)) return *fixed;
    if (output.width <= 0) return 1.0;
    const float ratio = static_cast<float>(scale.den_x) / static_cast<float>(scale.den_y);
    return static_cast<double>(output.height) /
           (static_cast<double>(ratio) * static_cast<double>(output.width) * scale.pixel_aspect);
}

IntSize scope_panel_size(ScopeSizeRule rule, double size, double aspect, const FrameScale &scale) {
    const auto height = [&scale](double pixels) {
        return trunc_to_int(pixels / static_cast<double>(scale.den_y));
    };
    switch (rule) {
        case ScopeSizeRule::kWidthTimesAspect:
            return {trunc_to_int(size * scale.horizontal), height(aspect * size + kLabelStrip)};
        case ScopeSizeRule::kSquare:
            return {trunc_to_int(size * scale.horizontal), height(size + kLabelStrip)};
        case ScopeSizeRule::kFixedWidth:
            return {trunc_to_int(kHistogramPanelWidth * scale.horizontal),
                    height(size + kLabelStrip + kHistogramFootRoom)};
    }
    return {};
}

}  // namespace ks
