#include "stage/script/script_text.h"

#include <cstddef>

namespace stage {
namespace {

unsigned byte_at(std::string_view text, std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
}

/// The surrogate D800..DFFF written at `i` as ED, A0..BF, 80..BF; 0 when there is none.
char32_t surrogate_at(std::string_view text, std::size_t i) {
    const unsigned second = byte_at(text, i + 1);
    if (byte_at(text, i) != 0xED || second < 0xA0 || i + 2 >= text.size()) return 0;
    return 0xD000u | (second & 0x3Fu) << 6 | (byte_at(text, i + 2) & 0x3Fu);
}

}  // namespace

std::string utf8_from_engine(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t first = surrogate_at(text, i);
        if (first == 0) {
            result += text[i++];
            continue;
        }
        i += 3;
        const char32_t second = surrogate_at(text, i);
        if (first >= 0xDC00 || second < 0xDC00) {
            result += "\xEF\xBF\xBD";
            continue;
        }
        i += 3;
        const char32_t c = 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
        result += static_cast<char>(0xF0 | c >> 18);
        result += static_cast<char>(0x80 | (c >> 12 & 0x3F));
        result += static_cast<char>(0x80 | (c >> 6 & 0x3F));
        result += static_cast<char>(0x80 | (c & 0x3F));
    }
    return result;
}

}  // namespace stage
