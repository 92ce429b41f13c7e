// How edits in the panel change an instance's stacking order.
#pragma once

#include <array>
#include <cstdint>

namespace ks::oracle {

// Entries 0 to 4, front first, and the count behind them, as the record holds them: stale entries
// included. Damaged projects hold any count; entries past the fifth count as absent.
using OrderBytes = std::array<std::int8_t, 6>;

// From the first `kind` on, every valid entry becomes the byte behind it. The count goes down by
// one even when there is none of `kind`, unless it is 0 or less.
void order_remove(OrderBytes &bytes, int kind);

// `kind` comes in front of all valid entries and the count goes up by one, unless it is among them
// or the count is 5 or more.
void order_add(OrderBytes &bytes, int kind);

// `kind` comes to entry 0, those before it move back by one. One that is absent replaces entry 0.
void order_to_front(OrderBytes &bytes, int kind);

}  // namespace ks::oracle
