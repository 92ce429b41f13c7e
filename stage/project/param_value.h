// Values of effect parameters as the project stores them.
#pragma once

#include <array>
#include <cstdint>

namespace stage {

/// A value of any parameter type; which members count follows from the type.
struct ParamValue {
    double number = 0;  ///< slider; popup (1-based); checkbox (0 or 1)
    double x = 0;       ///< point: the layer's own pixels (not square ones) at full resolution
    double y = 0;
    std::array<std::uint8_t, 4> color{};  ///< alpha, red, green, blue
    int layer = 0;                        ///< layer parameter: layer id, 0 for none

    bool operator==(const ParamValue &) const = default;
};

}  // namespace stage
