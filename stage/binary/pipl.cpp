#include "stage/binary/pipl.h"

#include <fmt/format.h>

#include <array>

#include "stage/binary/byte_view.h"

namespace stage {
namespace {

constexpr std::uint64_t kHeaderBytes = 10;
constexpr std::uint64_t kPropertyHeaderBytes = 16;

std::string four_character_code(const ByteView &bytes, std::uint64_t offset) {
    const std::uint32_t code = bytes.u32(offset);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text.push_back(static_cast<char>(static_cast<unsigned char>(code >> shift & 0xFF)));
    }
    return text;
}

std::string pascal_string(const ByteView &value) {
    const auto text = value.bytes(1, value.u8(0));
    return std::string(text.begin(), text.end());
}

PiplVersion version_pair(const ByteView &value) {
    return {value.u16(0), value.u16(2)};
}

// One row per known key: how its value is read into the list.
struct Decoder {
    std::string_view key;
    void (*decode)(Pipl &, const ByteView &value);
};

constexpr std::array<Decoder, 12> kDecoders = {{
    {"kind", [](Pipl &p, const ByteView &v) { p.kind = four_character_code(v, 0); }},
    {"name", [](Pipl &p, const ByteView &v) { p.name = pascal_string(v); }},
    {"catg", [](Pipl &p, const ByteView &v) { p.category = pascal_string(v); }},
    {"8664", [](Pipl &p, const ByteView &v) { p.entry_point = v.c_string(0); }},
    {"ePVR", [](Pipl &p, const ByteView &v) { p.list_version = version_pair(v); }},
    {"eSVR", [](Pipl &p, const ByteView &v) { p.spec_version = version_pair(v); }},
    {"eVER", [](Pipl &p, const ByteView &v) { p.effect_version = v.u32(0); }},
    {"eINF", [](Pipl &p, const ByteView &v) { p.info_flags = v.u32(0); }},
    {"eGLO", [](Pipl &p, const ByteView &v) { p.out_flags = v.u32(0); }},
    {"eGL2", [](Pipl &p, const ByteView &v) { p.out_flags2 = v.u32(0); }},
    {"eMNA", [](Pipl &p, const ByteView &v) { p.match_name = pascal_string(v); }},
    {"aeFL", [](Pipl &p, const ByteView &v) { p.reserved_info = v.u32(0); }},
}};

void decode_known(Pipl &pipl, const PiplProperty &property) {
    for (const Decoder &decoder : kDecoders) {
        if (decoder.key == property.key) {
            decoder.decode(pipl, ByteView(property.value, "property list"));
        }
    }
}

}  // namespace

Pipl parse_pipl(std::span<const std::uint8_t> bytes) {
    const ByteView view(bytes, "property list");
    Pipl pipl;
    pipl.version = view.u16(0);
    pipl.reserved = view.u32(2);
    const std::uint32_t count = view.u32(6);
    std::uint64_t at = kHeaderBytes;
    for (std::uint32_t i = 0; i < count; ++i) {
        PiplProperty property;
        property.offset = at;
        property.vendor = four_character_code(view, at);
        property.key = four_character_code(view, at + 4);
        property.id = view.u32(at + 8);
        property.length = view.u32(at + 12);
        const std::uint64_t stored = (std::uint64_t{property.length} + 3) / 4 * 4;
        const auto value = view.bytes(at + kPropertyHeaderBytes, stored);
        property.value.assign(value.begin(), value.end());
        decode_known(pipl, property);
        pipl.properties.push_back(std::move(property));
        at += kPropertyHeaderBytes + stored;
    }
    return pipl;
}

std::string describe_effect_version(std::uint32_t packed) {
    // Bits of the host's packing, high to low: 4 more of the version, 4 unused, 3 version,
    // 4 subversion, 4 bug fix, 2 stage, 9 build.
    static constexpr std::array<const char *, 4> kStages = {"development", "alpha", "beta",
                                                            "release"};
    const std::uint32_t version = (packed >> 26 & 0xF) << 3 | (packed >> 19 & 0x7);
    return fmt::format("{}.{}.{} {} build {}", version, packed >> 15 & 0xF, packed >> 11 & 0xF,
                       kStages[packed >> 9 & 0x3], packed & 0x1FF);
}

}  // namespace stage
