// UTF-8 to UTF-16 and back.
#pragma once

#include <string>
#include <string_view>

namespace stage {

/// Bytes that are no UTF-8 and unpaired surrogates become U+FFFD.
std::u16string utf16_from_utf8(std::string_view text);
std::string utf8_from_utf16(std::u16string_view text);

}  // namespace stage
