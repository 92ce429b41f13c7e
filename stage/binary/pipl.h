// The plug-in property list: the resource from which the host learns an effect's names, versions,
// flags and entry point without running its code.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stage {

struct PiplProperty {
    // Four-character codes in reading order ("8BIM", "kind"); stored byte-reversed.
    std::string vendor;
    std::string key;
    std::uint32_t id = 0;
    std::uint32_t length = 0;         // as stored; may or may not count the padding
    std::vector<std::uint8_t> value;  // length rounded up to a multiple of 4
    std::uint64_t offset = 0;         // of the property's first byte in the resource
};

struct PiplVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;

    bool operator==(const PiplVersion &) const = default;
};

struct Pipl {
    // Where the host keeps property lists in a Windows library.
    static constexpr std::string_view kResourceType = "PIPL";
    static constexpr std::uint32_t kResourceId = 16000;
    static constexpr std::uint16_t kLanguage = 1033;

    std::uint16_t version = 0;   // 1
    std::uint32_t reserved = 0;  // 0
    std::vector<PiplProperty> properties;

    // The properties of an effect, each absent when the list has none of its key.
    std::optional<std::string> kind;              // "kind": "eFKT" is an effect
    std::optional<std::string> name;              // "name"
    std::optional<std::string> category;          // "catg"
    std::optional<std::string> entry_point;       // "8664": 64-bit Windows code
    std::optional<PiplVersion> list_version;      // "ePVR"
    std::optional<PiplVersion> spec_version;      // "eSVR": the host interface asked for
    std::optional<std::uint32_t> effect_version;  // "eVER": as my_version
    std::optional<std::uint32_t> info_flags;      // "eINF"
    std::optional<std::uint32_t> out_flags;       // "eGLO": as out_flags
    std::optional<std::uint32_t> out_flags2;      // "eGL2": as out_flags2
    std::optional<std::string> match_name;        // "eMNA"
    std::optional<std::uint32_t> reserved_info;   // "aeFL"
};

// Parses the little-endian form found in Windows libraries. Properties follow each other at their
// length rounded up to 4, which reads lists whose lengths count the padding and lists whose lengths
// do not; an "eINF" of 2 bytes plus padding is read as well as one of 4. Bytes behind the last
// property are kept out of the result (check_pipl reports them). Throws BinaryError on damage: a
// property that exceeds the bytes, or a known one whose value does not fit its type.
Pipl parse_pipl(std::span<const std::uint8_t> bytes);

// What a strict host has to say against the list of an effect; empty when all is well: header
// values, the twelve properties present once and in order, vendor, ids, lengths, zero padding,
// names within the host's limits, nothing behind the end. One line per finding.
std::vector<std::string> check_pipl(const Pipl &pipl, std::span<const std::uint8_t> bytes);

// "2.0.3 release build 1" from the host's packed form of a version (my_version).
std::string describe_effect_version(std::uint32_t packed);

}  // namespace stage
