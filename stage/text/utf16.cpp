#include "stage/text/utf16.h"

#include <cstddef>
#include <cstdint>

namespace stage {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool is_surrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

/// Reads one code point at `*at`, which moves on by at least one byte.
char32_t next_utf8(std::string_view text, std::size_t *at) {
    const auto lead = static_cast<std::uint8_t>(text[(*at)++]);
    if (lead < 0x80) return lead;
    const int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return kReplacement;
    char32_t c = lead & (0x3Fu >> extra);
    for (int i = 0; i < extra; ++i) {
        if (*at >= text.size()) return kReplacement;
        const auto byte = static_cast<std::uint8_t>(text[*at]);
        if ((byte & 0xC0) != 0x80) return kReplacement;
        c = c << 6 | (byte & 0x3Fu);
        ++*at;
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    const bool valid = c >= kSmallest[extra] && c <= 0x10FFFF && !is_surrogate(c);
    return valid ? c : kReplacement;
}

void append_utf8(std::string *text, char32_t c) {
    if (c < 0x80) {
        *text += static_cast<char>(c);
        return;
    }
    const int extra = c >= 0x10000 ? 2 + 1 : c >= 0x800 ? 2 : 1;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    *text += static_cast<char>(kLead[extra] | (c >> (6 * extra)));
    for (int i = extra - 1; i >= 0; --i) *text += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
}

}  // namespace

std::u16string utf16_from_utf8(std::string_view text) {
    std::u16string result;
    for (std::size_t at = 0; at < text.size();) {
        char32_t c = next_utf8(text, &at);
        if (c >= 0x10000) {
            c -= 0x10000;
            result += static_cast<char16_t>(0xD800 + (c >> 10));
            c = 0xDC00 + (c & 0x3FF);
        }
        result += static_cast<char16_t>(c);
    }
    return result;
}

std::string utf8_from_utf16(std::u16string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        const bool high = c >= 0xD800 && c <= 0xDBFF;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        }
        append_utf8(&result, is_surrogate(c) ? kReplacement : c);
    }
    return result;
}

}  // namespace stage
