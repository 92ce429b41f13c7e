// File paths to and from UTF-8, with forward slashes, the same on every system.
#pragma once

#include <filesystem>
#include <string>

namespace stage {

inline std::filesystem::path path_from_utf8(const std::string &text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

inline std::string path_to_utf8(const std::filesystem::path &path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace stage
