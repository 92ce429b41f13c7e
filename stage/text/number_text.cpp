#include "stage/text/number_text.h"

#include <fmt/format.h>

namespace stage {

std::string number_text(double number) {
    return fmt::format("{:.10g}", number);
}

std::string color_text(std::uint32_t rgb) {
    return fmt::format("#{:06x}", rgb & 0xFFFFFF);
}

}  // namespace stage
