// Bytes that outlive a session or cross to the host: instance record, flat record, plug-in property
// list; and the union rule of rectangles. All numbers are little-endian.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "oracle/image.h"

namespace ks::oracle {

// The 3100 bytes of a new instance: state 0, ramp key 1.0, linear tables, order 1 2 3, count 3.
std::vector<std::uint8_t> new_instance_record();

// The 3100 bytes after a resetup from a flat record: tables rebuilt, state, order and count taken.
std::vector<std::uint8_t> restored_instance_record(const std::array<std::uint8_t, 8> &flat);

// The 8 bytes that a project keeps: state, five scope kinds, count, and 1 as the mark of the form.
std::array<std::uint8_t, 8> flat_record(std::uint8_t state, const std::array<std::int8_t, 5> &order,
                                        std::int8_t count);

// What a destination rectangle becomes: an empty one takes the source, a non-empty one the bounding
// box of both unless the source is empty. Empty means left >= right or top >= bottom.
Rect united(const Rect &destination, const Rect &source);

// The 310 bytes of the plug-in property list.
std::vector<std::uint8_t> property_list();

}  // namespace ks::oracle
