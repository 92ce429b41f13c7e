#include "stage/binary/byte_view.h"

#include <algorithm>

namespace stage {

void ByteView::require(std::uint64_t offset, std::uint64_t count) const {
    if (offset > bytes_.size() || count > bytes_.size() - offset) {
        throw BinaryError(std::string(what_) + " is cut short or damaged: " +
                          std::to_string(count) + " bytes wanted at offset " +
                          std::to_string(offset) + " of " + std::to_string(bytes_.size()));
    }
}

std::uint8_t ByteView::u8(std::uint64_t offset) const {
    require(offset, 1);
    return bytes_[offset];
}

std::uint16_t ByteView::u16(std::uint64_t offset) const {
    require(offset, 2);
    return static_cast<std::uint16_t>(bytes_[offset] | bytes_[offset + 1] << 8);
}

std::uint32_t ByteView::u32(std::uint64_t offset) const {
    require(offset, 4);
    return static_cast<std::uint32_t>(u16(offset)) | static_cast<std::uint32_t>(u16(offset + 2))
                                                         << 16;
}

std::uint64_t ByteView::u64(std::uint64_t offset) const {
    require(offset, 8);
    return static_cast<std::uint64_t>(u32(offset)) | static_cast<std::uint64_t>(u32(offset + 4))
                                                         << 32;
}

std::span<const std::uint8_t> ByteView::bytes(std::uint64_t offset, std::uint64_t count) const {
    require(offset, count);
    return bytes_.subspan(offset, count);
}

ByteView ByteView::sub(std::uint64_t offset, std::uint64_t count) const {
    return ByteView(bytes(offset, count), what_);
}

std::string ByteView::c_string(std::uint64_t offset) const {
    require(offset, 1);
    const auto rest = bytes_.subspan(offset);
    const auto window = rest.first(std::min<std::size_t>(rest.size(), kLongestString + 1));
    const auto end = std::find(window.begin(), window.end(), std::uint8_t{0});
    if (end == window.end()) {
        throw BinaryError(std::string(what_) + " is damaged: unterminated string at offset " +
                          std::to_string(offset));
    }
    return std::string(window.begin(), end);
}

std::string ByteView::utf16(std::uint64_t offset, std::uint64_t units) const {
    if (units > size() / 2) require(offset, size() + 1);
    require(offset, units * 2);
    std::string text;
    for (std::uint64_t i = 0; i < units; ++i) {
        const std::uint32_t unit = u16(offset + 2 * i);
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        const std::uint32_t next = high && i + 1 < units ? u16(offset + 2 * i + 2) : 0;
        if (next >= 0xDC00 && next < 0xE000) {
            append_utf8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        } else {
            append_utf8(text, unit);
        }
    }
    return text;
}

void append_utf8(std::string &text, std::uint32_t code_point) {
    if (code_point > 0x10FFFF || (code_point >= 0xD800 && code_point < 0xE000)) code_point = 0xFFFD;
    const auto put = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code_point < 0x80) {
        put(code_point);
        return;
    }
    if (code_point < 0x800) {
        put(0xC0 | code_point >> 6);
    } else {
        if (code_point < 0x10000) {
            put(0xE0 | code_point >> 12);
        } else {
            put(0xF0 | code_point >> 18);
            put(0x80 | (code_point >> 12 & 0x3F));
        }
        put(0x80 | (code_point >> 6 & 0x3F));
    }
    put(0x80 | (code_point & 0x3F));
}

}  // namespace stage
