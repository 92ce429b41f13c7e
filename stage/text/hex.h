// Bytes as hexadecimal text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stage {

/// Two lower-case digits for each byte.
std::string to_hex(const std::vector<std::uint8_t> &bytes);
/// Digits of either case; nothing for an odd count or another character.
std::optional<std::vector<std::uint8_t>> from_hex(std::string_view text);

}  // namespace stage
