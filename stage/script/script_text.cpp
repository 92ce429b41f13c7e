#include "stage/script/script_text.h"

#include <cstddef>

#include "stage/text/utf16.h"

namespace stage {
namespace {

unsigned byte_at(std::string_view text, std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
}

/// The surrogate D800..DFFF written at `i` as ED, A0..BF, 80..BF; 0 when there is none.
char16_t surrogate_at(std::string_view text, std::size_t i) {
    const unsigned second = byte_at(text, i + 1);
    if (byte_at(text, i) != 0xED || second < 0xA0 || i + 2 >= text.size()) return 0;
    return static_cast<char16_t>(0xD000u | (second & 0x3Fu) << 6 | (byte_at(text, i + 2) & 0x3Fu));
}

}  // namespace

std::string utf8_from_engine(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::u16string surrogates;
        for (; surrogate_at(text, i) != 0; i += 3) surrogates += surrogate_at(text, i);
        result += utf8_from_utf16(surrogates);
        if (i < text.size()) result += text[i++];
    }
    return result;
}

}  // namespace stage
