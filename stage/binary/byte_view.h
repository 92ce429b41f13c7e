// A bounds-checked, little-endian window on bytes of untrusted origin.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace stage {

// A file or resource that does not hold what its format promises. what() is one line.
struct BinaryError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads are unaligned and little-endian; each one outside the bytes throws BinaryError, so a reader
// built on a ByteView needs no further checks of its offsets. Offsets are 64-bit and count from the
// start of the view. The bytes are borrowed and must outlive the view.
class ByteView {
  public:
    ByteView() = default;

    // `what` names the bytes in error messages ("PE file", "property list"); a string literal.
    ByteView(std::span<const std::uint8_t> bytes, const char *what) : bytes_(bytes), what_(what) {}

    std::uint64_t size() const { return bytes_.size(); }

    std::uint8_t u8(std::uint64_t offset) const;
    std::uint16_t u16(std::uint64_t offset) const;
    std::uint32_t u32(std::uint64_t offset) const;
    std::uint64_t u64(std::uint64_t offset) const;

    // The `count` bytes from `offset`.
    std::span<const std::uint8_t> bytes(std::uint64_t offset, std::uint64_t count) const;

    // The same as a view of its own, offsets counting from `offset`.
    ByteView sub(std::uint64_t offset, std::uint64_t count) const;

    // Zero-terminated bytes from `offset`, terminator not included, at most kLongestString of them.
    std::string c_string(std::uint64_t offset) const;

    // `units` UTF-16 code units from `offset`, as UTF-8. A lone surrogate becomes U+FFFD.
    std::string utf16(std::uint64_t offset, std::uint64_t units) const;

    static constexpr std::uint64_t kLongestString = 4096;

  private:
    void require(std::uint64_t offset, std::uint64_t count) const;

    std::span<const std::uint8_t> bytes_;
    const char *what_ = "bytes";
};

}  // namespace stage
