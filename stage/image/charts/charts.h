// Built-in test charts.
#pragma once

#include <span>
#include <string_view>

#include "stage/image/picture.h"

namespace stage {

// A chart fills a picture of any size, alpha 1 and square pixels, with values as the host shows
// them (no transfer function is applied).
struct Chart {
    std::string_view name;
    std::string_view description;  // one line
    Picture (*draw)(int width, int height);
};

// All charts; the first is the one to show when none is asked for.
std::span<const Chart> charts();

// Draws the chart `name`. Throws PictureError for an unknown name, listing the known ones, and for
// sides that make_picture() refuses.
Picture draw_chart(std::string_view name, int width = 1920, int height = 1080);

}  // namespace stage
