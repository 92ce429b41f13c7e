// Headers and section table of a PE file: what the readers of its directories share.
#pragma once

#include <cstdint>
#include <vector>

#include "stage/binary/byte_view.h"
#include "stage/binary/pe_file.h"

namespace stage::pe {

struct Section {
    std::uint32_t address = 0;      // relative to the image's base
    std::uint32_t size = 0;         // bytes present in the file
    std::uint32_t file_offset = 0;  // of those bytes
};

struct Directory {
    std::uint32_t address = 0;  // relative to the image's base; 0 when absent
    std::uint32_t size = 0;
};

// Indices of the optional header's data directories.
enum class DirectoryIndex : std::uint32_t { exports = 0, imports = 1, resources = 2 };

// Upper bounds on what one file may hold, so that a damaged one cannot make a reader run or
// allocate without end. Far above what any real library has.
inline constexpr std::uint32_t kMostSections = 256;
inline constexpr std::uint32_t kMostExports = 65536;
inline constexpr std::uint32_t kMostImportedLibraries = 1024;
inline constexpr std::uint32_t kMostImports = 65536;
inline constexpr std::uint32_t kMostResources = 16384;
inline constexpr std::uint64_t kMostResourceBytes = std::uint64_t{1} << 30;

class Image {
  public:
    // Reads headers and sections; throws BinaryError.
    explicit Image(ByteView file);

    std::uint16_t machine() const { return machine_; }
    bool is_dll() const { return is_dll_; }
    Directory directory(DirectoryIndex index) const;

    // File offset of a relative virtual address; throws BinaryError when no section holds it.
    std::uint64_t offset_of(std::uint32_t address) const;

    const ByteView &file() const { return file_; }

  private:
    ByteView file_;
    std::uint16_t machine_ = 0;
    bool is_dll_ = false;
    std::vector<Directory> directories_;
    std::vector<Section> sections_;
};

// Every resource of the file, in directory order.
std::vector<PeResource> read_resources(const Image &image);

}  // namespace stage::pe
