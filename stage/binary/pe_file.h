// Reader of 64-bit Windows libraries and programs (PE32+), on any platform.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stage {

// One library that a file imports from.
struct PeImport {
    std::string dll;                     // as written in the file, "KERNEL32.dll"
    std::vector<std::string> functions;  // in file order; imports by number read "#12"
};

// Type or name of a resource: a number, or a name in upper case (Windows looks names up that way).
struct ResourceId {
    std::uint32_t number = 0;  // meaningful only when name is empty
    std::string name;          // UTF-8, ASCII letters folded to upper case

    bool operator==(const ResourceId &) const = default;
};

struct PeResource {
    ResourceId type;
    ResourceId name;
    std::uint16_t language = 0;  // 1033 is English (United States)
    std::vector<std::uint8_t> bytes;
    std::string stored_type;  // name of the type with its case as stored; empty for a number
};

struct PeFile {
    static constexpr std::uint16_t kMachineAmd64 = 0x8664;

    std::uint16_t machine = 0;         // IMAGE_FILE_MACHINE_...
    bool is_dll = false;               // IMAGE_FILE_DLL
    std::vector<std::string> exports;  // by name, in the file's (sorted) order
    std::vector<PeImport> imports;     // load-time imports; delay-loaded ones are not listed
    std::vector<PeResource> resources;

    // The resource of a type name (upper case), id and language; null when there is none.
    const PeResource *find_resource(std::string_view type, std::uint32_t id,
                                    std::uint16_t language) const;

    // The first resource of a numbered type (16 is the version resource) in any language, or null.
    const PeResource *find_resource(std::uint32_t type) const;
};

// Whether bytes begin as a DOS/Windows program does.
bool looks_like_pe(std::span<const std::uint8_t> bytes);

// Throws BinaryError when the bytes are no 64-bit PE file or are damaged.
PeFile read_pe(std::span<const std::uint8_t> bytes);

// A whole file as bytes, at most 1 GiB. Throws BinaryError with the file's name and the reason.
std::vector<std::uint8_t> read_whole_file(const std::filesystem::path &file);

}  // namespace stage
