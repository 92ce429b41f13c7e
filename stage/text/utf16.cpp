#include "stage/text/utf16.h"

#include <utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace stage {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool is_continuation(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

/// `rest` begins with bytes that are no UTF-8. How many of them count as one broken character: as
/// many as the first announces, while continuation bytes follow.
std::size_t broken_length(std::string_view rest) {
    const auto lead = static_cast<std::uint8_t>(rest.front());
    const bool leads = lead >= 0xC2 && lead <= 0xF4;
    const std::size_t announced = !leads ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    std::size_t length = 1;
    while (length < announced && length < rest.size() && is_continuation(rest[length])) {
        ++length;
    }
    return length;
}

bool is_lead_surrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool is_trail_surrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

std::u16string utf16_from_utf8(std::string_view text) {
    std::u16string result;
    while (true) {
        const std::size_t valid = std::min(utf8::find_invalid(text), text.size());
        utf8::utf8to16(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(valid),
                       std::back_inserter(result));
        text.remove_prefix(valid);
        if (text.empty()) return result;
        result += kReplacement;
        text.remove_prefix(broken_length(text));
    }
}

std::string utf8_from_utf16(std::u16string_view text) {
    std::u16string paired(text);
    for (std::size_t i = 0; i < paired.size(); ++i) {
        const bool pair = is_lead_surrogate(paired[i]) && i + 1 < paired.size() &&
                          is_trail_surrogate(paired[i + 1]);
        if (pair) {
            ++i;
        } else if (is_lead_surrogate(paired[i]) || is_trail_surrogate(paired[i])) {
            paired[i] = kReplacement;
        }
    }
    return utf8::utf16to8(paired);
}

}  // namespace stage
