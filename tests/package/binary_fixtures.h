// Small binary files made in memory, with every offset known, for the readers' tests.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace ks::test {

using Bytes = std::vector<std::uint8_t>;

// Appends or patches little-endian numbers and text.
class ByteWriter {
  public:
    ByteWriter &u16(std::uint16_t value) { return number(value, 2); }
    ByteWriter &u32(std::uint32_t value) { return number(value, 4); }
    ByteWriter &u64(std::uint64_t value) { return number(value, 8); }
    ByteWriter &text(std::string_view text);
    ByteWriter &utf16(std::string_view ascii);
    // Continues at `offset`, with zeros up to it if it lies behind the end.
    ByteWriter &at(std::size_t offset);

    Bytes take() { return std::move(bytes_); }
    std::size_t position() const { return position_; }

  private:
    ByteWriter &number(std::uint64_t value, int count);
    void put(std::uint8_t byte);

    Bytes bytes_;
    std::size_t position_ = 0;
};

// A property list of an effect "Sample" in category "Group", match name "M", entry point "Go",
// versions 2.0 and 13.14, effect version 0x101E01, flags 0x11 and 0x22. The length of "eINF" is
// given: 2 or 4, four bytes of data either way.
Bytes sample_pipl(std::uint32_t info_length);

// A 64-bit library that exports "Alpha" and "Beta", imports "Sleep" and number 12 from "K.dll", and
// has resources PiPL (stored in mixed case) 16000 in language 1033, and type 16, id 1, language 0.
Bytes sample_pe(std::span<const std::uint8_t> pipl, std::span<const std::uint8_t> version);
inline constexpr std::size_t kPeMachineOffset = 68;
inline constexpr std::size_t kPeOptionalMagicOffset = 88;
inline constexpr std::size_t kPeExportCountOffset = 0x200 + 24;

// A version resource with file version 2.0.3.1, product version 4.5.6.7 and one string, "Key" with
// text "Value".
Bytes sample_version();

// A 64-bit library that exports "shown", has a hidden and an undefined symbol besides, and needs
// "libc.so.6".
Bytes sample_elf();

// Calls `read` on every truncation of `whole` and on `whole` with every single bit flipped. A read
// may succeed or throw stage::BinaryError; anything else is a failure of the running test.
void expect_robust(const Bytes &whole,
                   const std::function<void(std::span<const std::uint8_t>)> &read);

}  // namespace ks::test
