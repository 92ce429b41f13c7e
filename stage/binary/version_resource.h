// The version resource (type 16) of a Windows file.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stage {

struct VersionResource {
    std::array<std::uint16_t, 4> file_version{};  // 2.0.3.1 is {2, 0, 3, 1}
    std::array<std::uint16_t, 4> product_version{};
    // Names and texts of all string tables, in file order, UTF-8: "ProductName", "Kestrel Scopes
    // 2".
    std::vector<std::pair<std::string, std::string>> strings;

    // Text of the first entry of that name; empty when there is none.
    std::string_view text(std::string_view name) const;
};

// Throws BinaryError when the bytes are no version resource or are damaged.
VersionResource read_version_resource(std::span<const std::uint8_t> bytes);

}  // namespace stage
