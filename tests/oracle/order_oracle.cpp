#include "oracle/order_oracle.h"

#include <algorithm>

namespace ks::oracle {
namespace {

int valid_entries(const OrderBytes &bytes) {
    return std::clamp<int>(bytes[5], 0, 5);
}

}  // namespace

void order_remove(OrderBytes &bytes, int kind) {
    if (bytes[5] <= 0) return;
    const std::int8_t count = bytes[5];
    const auto end = bytes.begin() + valid_entries(bytes);
    const auto found = std::find(bytes.begin(), end, kind);
    // The byte behind the last entry moves up too; behind the fifth one that is the count.
    if (found != end) std::copy(found + 1, end + 1, found);
    bytes[5] = static_cast<std::int8_t>(count - 1);
}

void order_add(OrderBytes &bytes, int kind) {
    const auto end = bytes.begin() + valid_entries(bytes);
    if (bytes[5] >= 5 || std::find(bytes.begin(), end, kind) != end) return;
    std::copy_backward(bytes.begin(), end, end + 1);
    bytes[0] = static_cast<std::int8_t>(kind);
    bytes[5] = static_cast<std::int8_t>(bytes[5] + 1);
}

void order_to_front(OrderBytes &bytes, int kind) {
    if (bytes[0] == kind) return;
    // Of two equal entries the last one gives way.
    for (int at = valid_entries(bytes) - 1; at >= 1; --at) {
        const auto place = bytes.begin() + at;
        if (*place != kind) continue;
        std::copy_backward(bytes.begin(), place, place + 1);
        break;
    }
    bytes[0] = static_cast<std::int8_t>(kind);
}

}  // namespace ks::oracle
