#include "package/binary_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>

#include "stage/binary/byte_view.h"

namespace ks::test {

void ByteWriter::put(std::uint8_t byte) {
    if (position_ == bytes_.size()) bytes_.push_back(0);
    bytes_[position_++] = byte;
}

ByteWriter &ByteWriter::number(std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i) put(static_cast<std::uint8_t>(value >> 8 * i & 0xFF));
    return *this;
}

ByteWriter &ByteWriter::text(std::string_view text) {
    for (const char c : text) put(static_cast<std::uint8_t>(c));
    return *this;
}

ByteWriter &ByteWriter::utf16(std::string_view ascii) {
    for (const char c : ascii) u16(static_cast<std::uint8_t>(c));
    return *this;
}

ByteWriter &ByteWriter::at(std::size_t offset) {
    if (bytes_.size() < offset) bytes_.resize(offset);
    position_ = offset;
    return *this;
}

Bytes sample_pipl(std::uint32_t info_length) {
    using namespace std::string_view_literals;
    ByteWriter w;
    w.u16(1).u32(0).u32(12);
    const auto property = [&w](std::string_view reversed_key,
                               std::uint32_t length) -> ByteWriter & {
        return w.text("MIB8").text(reversed_key).u32(0).u32(length);
    };
    property("dnik", 4).text("TKFe");
    property("eman", 8).text("\x06Sample\0"sv);
    property("gtac", 8).text("\x05Group\0\0"sv);
    property("4668", 4).text("Go\0\0"sv);
    property("RVPe", 4).u16(2).u16(0);
    property("RVSe", 4).u16(13).u16(14);
    property("REVe", 4).u32(0x101E01);
    property("FNIe", info_length).u32(0);
    property("OLGe", 4).u32(0x11);
    property("2LGe", 4).u32(0x22);
    property("ANMe", 4).text("\x01M\0\0"sv);
    property("LFea", 4).u32(0);
    return w.take();
}

namespace {

constexpr std::uint32_t kSectionAddress = 0x1000;
constexpr std::size_t kSectionOffset = 0x200;
constexpr std::uint32_t kResources = 0x200;  // start of the resource tree within the section

void write_headers(ByteWriter &w) {
    w.text("MZ").at(0x3C).u32(64);
    w.at(64).text("PE").u16(0);
    w.u16(0x8664).u16(1).u32(0).u32(0).u32(0).u16(240).u16(0x2022);
    w.u16(0x020B).at(88 + 108).u32(16);
    w.u32(kSectionAddress).u32(40);               // exports
    w.u32(kSectionAddress + 0x100).u32(40);       // imports
    w.u32(kSectionAddress + kResources).u32(80);  // resources
    w.at(88 + 240).text(".all").at(88 + 240 + 8);
    w.u32(0x1000).u32(kSectionAddress).u32(0x800).u32(kSectionOffset);
}

void write_exports_and_imports(ByteWriter &w) {
    w.at(kSectionOffset + 24).u32(2).u32(0).u32(kSectionAddress + 0x40);
    w.at(kSectionOffset + 0x40).u32(kSectionAddress + 0x60).u32(kSectionAddress + 0x70);
    w.at(kSectionOffset + 0x60).text("Alpha");
    w.at(kSectionOffset + 0x70).text("Beta");
    w.at(kSectionOffset + 0x100).u32(kSectionAddress + 0x140).u32(0).u32(0);
    w.u32(kSectionAddress + 0x180).u32(kSectionAddress + 0x140);
    w.at(kSectionOffset + 0x140).u64(kSectionAddress + 0x160).u64(0x8000000000000000u + 12).u64(0);
    w.at(kSectionOffset + 0x160).u16(0).text("Sleep");
    w.at(kSectionOffset + 0x180).text("K.dll");
}

// One directory of the tree with its entries (key, target).
void write_directory(ByteWriter &w, std::size_t offset, std::uint16_t named, std::uint16_t numbered,
                     std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> entries) {
    w.at(kSectionOffset + kResources + offset + 12).u16(named).u16(numbered);
    for (const auto &[key, target] : entries) w.u32(key).u32(target);
}

}  // namespace

Bytes sample_pe(std::span<const std::uint8_t> pipl, std::span<const std::uint8_t> version) {
    constexpr std::uint32_t kBranch = 0x80000000;
    constexpr std::size_t kData = kSectionOffset + 0x340;
    ByteWriter w;
    write_headers(w);
    write_exports_and_imports(w);
    write_directory(w, 0x00, 1, 1, {{kBranch + 0xD0, kBranch + 0x20}, {16, kBranch + 0x40}});
    write_directory(w, 0x20, 0, 1, {{16000, kBranch + 0x60}});
    write_directory(w, 0x40, 0, 1, {{1, kBranch + 0x80}});
    write_directory(w, 0x60, 0, 1, {{1033, 0xA0}});
    write_directory(w, 0x80, 0, 1, {{0, 0xB0}});
    const std::uint32_t pipl_address = kSectionAddress + 0x340;
    const auto pipl_size = static_cast<std::uint32_t>(pipl.size());
    const std::uint32_t version_address = pipl_address + (pipl_size + 3) / 4 * 4;
    w.at(kSectionOffset + kResources + 0xA0).u32(pipl_address).u32(pipl_size);
    w.at(kSectionOffset + kResources + 0xB0).u32(version_address);
    w.u32(static_cast<std::uint32_t>(version.size()));
    w.at(kSectionOffset + kResources + 0xD0).u16(4).utf16("PiPL");
    w.at(kSectionOffset + 0x800);
    Bytes bytes = w.take();
    std::copy(pipl.begin(), pipl.end(), bytes.begin() + kData);
    std::copy(version.begin(), version.end(),
              bytes.begin() + kSectionOffset + (version_address - kSectionAddress));
    return bytes;
}

Bytes sample_version() {
    ByteWriter w;
    w.u16(180).u16(52).u16(0).utf16("VS_VERSION_INFO").at(40);
    w.u32(0xFEEF04BD).u32(0x10000).u32(2u << 16 | 0).u32(3u << 16 | 1).u32(4u << 16 | 5);
    w.u32(6u << 16 | 7).at(92);
    w.u16(88).u16(0).u16(1).utf16("StringFileInfo").at(92 + 36);
    w.u16(52).u16(0).u16(1).utf16("040904B0").at(92 + 36 + 24);
    w.u16(28).u16(6).u16(1).utf16("Key").at(92 + 36 + 24 + 16).utf16("Value").u16(0);
    w.at(180);
    return w.take();
}

namespace {

struct ElfSection {
    std::uint32_t type;
    std::uint64_t offset, size;
    std::uint32_t link;
};

void write_symbol(ByteWriter &w, std::uint32_t name, unsigned info, unsigned visibility,
                  std::uint16_t section) {
    w.u32(name).u16(static_cast<std::uint16_t>(info | visibility << 8)).u16(section);
    w.u64(0).u64(0);
}

}  // namespace

Bytes sample_elf() {
    using namespace std::string_view_literals;
    constexpr std::string_view kStrings = "\0shown\0secret\0wanted\0libc.so.6\0"sv;
    constexpr unsigned kGlobalFunction = 0x12;
    ByteWriter w;
    w.text(
         "\x7F"
         "ELF\x02\x01\x01")
        .at(16)
        .u16(3)
        .u16(62)
        .u32(1);
    w.at(40).u64(0x200).at(52).u16(64).u16(0).u16(0).u16(64).u16(4).u16(0);
    w.at(0x80).text(kStrings);
    w.at(0x100);
    write_symbol(w, 0, 0, 0, 0);
    write_symbol(w, 1, kGlobalFunction, 0, 1);
    write_symbol(w, 7, kGlobalFunction, 2, 1);
    write_symbol(w, 14, kGlobalFunction, 0, 0);
    w.at(0x180).u64(1).u64(21).u64(0).u64(0);
    const ElfSection sections[] = {
        {0, 0, 0, 0}, {3, 0x80, kStrings.size(), 0}, {11, 0x100, 96, 1}, {6, 0x180, 32, 1}};
    std::size_t at = 0x200;
    for (const ElfSection &section : sections) {
        w.at(at + 4).u32(section.type).at(at + 24).u64(section.offset).u64(section.size);
        w.u32(section.link).at(at += 64);
    }
    return w.take();
}

void expect_robust(const Bytes &whole,
                   const std::function<void(std::span<const std::uint8_t>)> &read) {
    const auto attempt = [&read](const Bytes &bytes, const std::string &what) {
        try {
            read(bytes);
        } catch (const stage::BinaryError &error) {
            const std::string text = error.what();
            EXPECT_FALSE(text.empty()) << what;
            EXPECT_EQ(text.find('\n'), std::string::npos) << what << ": " << text;
        } catch (const std::exception &error) {
            ADD_FAILURE() << what << ": " << error.what();
        }
    };
    for (std::size_t length = 0; length < whole.size(); ++length) {
        // A vector of just that capacity, so that an address sanitizer sees one byte too many.
        attempt(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)),
                "cut to " + std::to_string(length) + " bytes");
    }
    Bytes flipped = whole;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        const auto mask = static_cast<std::uint8_t>(1u << bit % 8);
        flipped[bit / 8] ^= mask;
        attempt(flipped, "bit " + std::to_string(bit) + " flipped");
        flipped[bit / 8] ^= mask;
    }
}

}  // namespace ks::test
