#include "stage/binary/elf_file.h"

#include <algorithm>
#include <array>

#include "stage/binary/byte_view.h"

namespace stage {
namespace {

constexpr std::array<std::uint8_t, 4> kMagic = {0x7F, 'E', 'L', 'F'};
constexpr std::uint8_t kClass64 = 2;
constexpr std::uint8_t kLittleEndian = 1;
constexpr std::uint32_t kSectionDynamic = 6;
constexpr std::uint32_t kSectionDynamicSymbols = 11;
constexpr std::uint64_t kTagNeeded = 1;
constexpr std::uint64_t kSymbolBytes = 24;
constexpr std::uint64_t kDynamicBytes = 16;
// Keeps a damaged file from making the reader allocate without end; far above any real library.
constexpr std::uint64_t kMostSymbols = 262144;

struct Section {
    std::uint32_t type = 0;
    std::uint32_t link = 0;  // for both kinds read here: index of the string table
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
};

Section read_section(const ByteView &file, std::uint64_t at) {
    return {file.u32(at + 4), file.u32(at + 40), file.u64(at + 24), file.u64(at + 32)};
}

// A defined symbol that other files can bind to: global or weak, default or protected visibility.
bool is_exported(const ByteView &symbols, std::uint64_t at) {
    const unsigned binding = symbols.u8(at + 4) >> 4;
    const unsigned visibility = symbols.u8(at + 5) & 3;
    const unsigned section = symbols.u16(at + 6);
    return (binding == 1 || binding == 2) && (visibility == 0 || visibility == 3) && section != 0;
}

class Reader {
  public:
    Reader(const ByteView &file, ElfFile &out) : file_(file), out_(out) {}

    void read() {
        const std::uint64_t table = file_.u64(40);
        const std::uint64_t entry_bytes = file_.u16(58);
        const std::uint64_t count = file_.u16(60);
        if (count > 0 && entry_bytes < 64) {
            throw BinaryError("ELF file is damaged: section headers too short");
        }
        file_.bytes(table, count * entry_bytes);
        for (std::uint64_t i = 0; i < count; ++i) {
            sections_.push_back(read_section(file_, table + i * entry_bytes));
        }
        for (const Section &section : sections_) {
            if (section.type == kSectionDynamicSymbols) read_symbols(section);
            if (section.type == kSectionDynamic) read_dynamic(section);
        }
    }

  private:
    ByteView strings_of(const Section &section) const {
        if (section.link >= sections_.size()) {
            throw BinaryError("ELF file is damaged: no string table");
        }
        const Section &strings = sections_[section.link];
        return file_.sub(strings.offset, strings.size);
    }

    void read_symbols(const Section &section) {
        const ByteView symbols = file_.sub(section.offset, section.size);
        const ByteView strings = strings_of(section);
        const std::uint64_t count = section.size / kSymbolBytes;
        if (count > kMostSymbols) throw BinaryError("ELF file is damaged: too many symbols");
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t at = i * kSymbolBytes;
            if (is_exported(symbols, at)) out_.exports.push_back(strings.c_string(symbols.u32(at)));
        }
    }

    void read_dynamic(const Section &section) {
        const ByteView entries = file_.sub(section.offset, section.size);
        const ByteView strings = strings_of(section);
        const std::uint64_t count = section.size / kDynamicBytes;
        if (count > kMostSymbols) throw BinaryError("ELF file is damaged: too many entries");
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t tag = entries.u64(i * kDynamicBytes);
            if (tag == 0) return;
            if (tag != kTagNeeded) continue;
            out_.needed.push_back(strings.c_string(entries.u64(i * kDynamicBytes + 8)));
        }
    }

    ByteView file_;
    ElfFile &out_;
    std::vector<Section> sections_;
};

}  // namespace

bool looks_like_elf(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= kMagic.size() && std::equal(kMagic.begin(), kMagic.end(), bytes.begin());
}

ElfFile read_elf(std::span<const std::uint8_t> bytes) {
    if (!looks_like_elf(bytes)) throw BinaryError("not an ELF file");
    const ByteView file(bytes, "ELF file");
    if (file.u8(4) != kClass64 || file.u8(5) != kLittleEndian) {
        throw BinaryError("not a 64-bit little-endian ELF file");
    }
    ElfFile out;
    out.type = file.u16(16);
    out.machine = file.u16(18);
    Reader(file, out).read();
    return out;
}

}  // namespace stage
