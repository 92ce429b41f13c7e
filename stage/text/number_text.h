// Numbers and colours as users read and type them.
#pragma once

#include <cstdint>
#include <string>

namespace stage {

/// Up to ten digits, none that say nothing: "0.1", "200", "1e+20".
std::string number_text(double number);

/// "#rrggbb" of 0xRRGGBB; what lies above is left out.
std::string color_text(std::uint32_t rgb);

}  // namespace stage
