#include "stage/binary/byte_view.h"

#include <fmt/format.h>

#include <algorithm>

#include "stage/text/utf16.h"

namespace stage {

void ByteView::require(std::uint64_t offset, std::uint64_t count) const {
    if (offset > bytes_.size() || count > bytes_.size() - offset) {
        throw BinaryError(
            fmt::format("{} is cut short or damaged: {} bytes wanted at offset {} of {}", what_,
                        count, offset, bytes_.size()));
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
        throw BinaryError(
            fmt::format("{} is damaged: unterminated string at offset {}", what_, offset));
    }
    return std::string(window.begin(), end);
}

std::string ByteView::utf16(std::uint64_t offset, std::uint64_t units) const {
    if (units > size() / 2) require(offset, size() + 1);
    require(offset, units * 2);
    std::u16string text;
    text.reserve(units);
    for (std::uint64_t i = 0; i < units; ++i) text += static_cast<char16_t>(u16(offset + 2 * i));
    return utf8_from_utf16(text);
}

}  // namespace stage
