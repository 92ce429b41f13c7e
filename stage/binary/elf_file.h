// Reader of 64-bit little-endian ELF libraries, on any platform.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace stage {

struct ElfFile {
    static constexpr std::uint16_t kMachineX8664 = 62;
    static constexpr std::uint16_t kTypeShared = 3;

    std::uint16_t machine = 0;         // EM_...
    std::uint16_t type = 0;            // ET_...
    std::vector<std::string> exports;  // defined, visible dynamic symbols, in file order
    std::vector<std::string> needed;   // DT_NEEDED: libraries loaded with it, in file order
};

// Whether bytes begin as an ELF file does.
bool looks_like_elf(std::span<const std::uint8_t> bytes);

// Throws BinaryError when the bytes are no 64-bit little-endian ELF file or are damaged. Symbols
// are found through the section table, which tools that strip symbols leave in place.
ElfFile read_elf(std::span<const std::uint8_t> bytes);

}  // namespace stage
