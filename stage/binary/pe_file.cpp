#include "stage/binary/pe_file.h"

#include <algorithm>
#include <fstream>

#include "stage/binary/byte_view.h"
#include "stage/binary/pe_layout.h"

namespace stage {
namespace pe {
namespace {

constexpr std::uint32_t kSignature = 0x00004550;  // "PE\0\0"
constexpr std::uint16_t kOptionalMagic64 = 0x020B;
constexpr std::uint16_t kCharacteristicDll = 0x2000;
constexpr std::uint64_t kFileHeaderBytes = 20;
constexpr std::uint64_t kSectionHeaderBytes = 40;
constexpr std::uint64_t kDirectoriesInOptionalHeader = 112;
constexpr std::uint64_t kImportByNumber = std::uint64_t{1} << 63;

}  // namespace

Image::Image(ByteView file) : file_(file) {
    const std::uint64_t header = file_.u32(0x3C);
    if (file_.u32(header) != kSignature) throw BinaryError("not a PE file: no PE signature");
    const std::uint64_t file_header = header + 4;
    machine_ = file_.u16(file_header);
    const std::uint16_t section_count = file_.u16(file_header + 2);
    const std::uint16_t optional_bytes = file_.u16(file_header + 16);
    is_dll_ = (file_.u16(file_header + 18) & kCharacteristicDll) != 0;
    if (section_count > kMostSections) throw BinaryError("PE file is damaged: too many sections");

    const std::uint64_t optional = file_header + kFileHeaderBytes;
    if (file_.u16(optional) != kOptionalMagic64) {
        throw BinaryError("not a 64-bit PE file: optional header is not PE32+");
    }
    const std::uint32_t directory_count = file_.u32(optional + kDirectoriesInOptionalHeader - 4);
    if (directory_count > 16 ||
        kDirectoriesInOptionalHeader + 8 * directory_count > optional_bytes) {
        throw BinaryError("PE file is damaged: data directories exceed the optional header");
    }
    for (std::uint32_t i = 0; i < directory_count; ++i) {
        const std::uint64_t at = optional + kDirectoriesInOptionalHeader + 8 * i;
        directories_.push_back({file_.u32(at), file_.u32(at + 4)});
    }
    for (std::uint32_t i = 0; i < section_count; ++i) {
        const std::uint64_t at = optional + optional_bytes + kSectionHeaderBytes * i;
        sections_.push_back({file_.u32(at + 12), file_.u32(at + 16), file_.u32(at + 20)});
    }
}

Directory Image::directory(DirectoryIndex index) const {
    const auto i = static_cast<std::size_t>(index);
    return i < directories_.size() ? directories_[i] : Directory{};
}

std::uint64_t Image::offset_of(std::uint32_t address) const {
    for (const Section &section : sections_) {
        if (address >= section.address && address - section.address < section.size) {
            return std::uint64_t{section.file_offset} + (address - section.address);
        }
    }
    throw BinaryError("PE file is damaged: address " + std::to_string(address) +
                      " lies in no section");
}

namespace {

std::vector<std::string> read_exports(const Image &image) {
    std::vector<std::string> names;
    const Directory directory = image.directory(DirectoryIndex::exports);
    if (directory.address == 0) return names;
    const ByteView &file = image.file();
    const std::uint64_t table = image.offset_of(directory.address);
    const std::uint32_t count = file.u32(table + 24);
    if (count == 0) return names;
    if (count > kMostExports) throw BinaryError("PE file is damaged: too many exports");
    const std::uint64_t pointers = image.offset_of(file.u32(table + 32));
    for (std::uint32_t i = 0; i < count; ++i) {
        names.push_back(file.c_string(image.offset_of(file.u32(pointers + 4 * std::uint64_t{i}))));
    }
    return names;
}

std::string imported_name(const Image &image, std::uint64_t entry) {
    if (entry & kImportByNumber) return std::string("#").append(std::to_string(entry & 0xFFFF));
    if (entry > 0x7FFFFFFF) throw BinaryError("PE file is damaged: bad import entry");
    // Two bytes of hint stand before the name.
    return image.file().c_string(image.offset_of(static_cast<std::uint32_t>(entry)) + 2);
}

std::vector<PeImport> read_imports(const Image &image) {
    std::vector<PeImport> imports;
    const Directory directory = image.directory(DirectoryIndex::imports);
    if (directory.address == 0) return imports;
    const ByteView &file = image.file();
    std::uint64_t descriptor = image.offset_of(directory.address);
    std::uint32_t functions = 0;
    for (;; descriptor += 20) {
        const std::uint32_t lookup = file.u32(descriptor);
        const std::uint32_t name = file.u32(descriptor + 12);
        const std::uint32_t bound = file.u32(descriptor + 16);
        if (name == 0) return imports;
        if (imports.size() == kMostImportedLibraries) {
            throw BinaryError("PE file is damaged: too many imported libraries");
        }
        PeImport import{file.c_string(image.offset_of(name)), {}};
        std::uint64_t at = image.offset_of(lookup != 0 ? lookup : bound);
        for (std::uint64_t entry = file.u64(at); entry != 0; entry = file.u64(at += 8)) {
            if (++functions > kMostImports) {
                throw BinaryError("PE file is damaged: too many imported functions");
            }
            import.functions.push_back(imported_name(image, entry));
        }
        imports.push_back(std::move(import));
    }
}

}  // namespace
}  // namespace pe

bool looks_like_pe(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= 2 && bytes[0] == 'M' && bytes[1] == 'Z';
}

PeFile read_pe(std::span<const std::uint8_t> bytes) {
    if (!looks_like_pe(bytes)) throw BinaryError("not a PE file: does not start with MZ");
    const pe::Image image(ByteView(bytes, "PE file"));
    PeFile file;
    file.machine = image.machine();
    file.is_dll = image.is_dll();
    file.exports = pe::read_exports(image);
    file.imports = pe::read_imports(image);
    file.resources = pe::read_resources(image);
    return file;
}

const PeResource *PeFile::find_resource(std::string_view type, std::uint32_t id,
                                        std::uint16_t language) const {
    const auto found = std::find_if(resources.begin(), resources.end(), [&](const PeResource &r) {
        return r.type.name == type && r.name.name.empty() && r.name.number == id &&
               r.language == language;
    });
    return found == resources.end() ? nullptr : &*found;
}

const PeResource *PeFile::find_resource(std::uint32_t type) const {
    const auto found = std::find_if(resources.begin(), resources.end(), [&](const PeResource &r) {
        return r.type.name.empty() && r.type.number == type;
    });
    return found == resources.end() ? nullptr : &*found;
}

std::vector<std::uint8_t> read_whole_file(const std::filesystem::path &file) {
    constexpr std::uintmax_t kLargest = std::uintmax_t{1} << 30;
    std::error_code error;
    const bool regular = std::filesystem::is_regular_file(file, error);
    if (!regular) {
        throw BinaryError("cannot read " + file.string() + ": " +
                          (error ? error.message() : std::string("not a file")));
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kLargest) {
        throw BinaryError("cannot read " + file.string() + ": " +
                          (error ? error.message() : std::string("larger than 1 GiB")));
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char *>(bytes.data()), static_cast<std::streamsize>(size));
    if (!stream) throw BinaryError("cannot read " + file.string() + ": read error");
    return bytes;
}

}  // namespace stage
