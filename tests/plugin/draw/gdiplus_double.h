// A stand-in for GDI+, linked in place of it: every call is noted in the log of the fake host,
// among the host's own calls; calls fail or throw on request; objects alive are counted. Nothing is
// drawn.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace gdiplus_double {

struct State {
    std::map<std::string, std::int32_t> fails;  ///< by function: its status, nothing is made
    std::string throws;                         ///< this function throws an int
    std::map<const void *, std::string> alive;  ///< objects, by address: kind and number
    int made = 0;
    std::uint8_t *raster = nullptr;  ///< what the last bitmap was made over
    std::vector<std::string> misuse;
};

State &state();

}  // namespace gdiplus_double
