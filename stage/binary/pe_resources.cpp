// The resource directory: a tree of three levels, type, name and language, over leaves of bytes.
#include <utility>

#include "stage/binary/pe_layout.h"

namespace stage::pe {
namespace {

constexpr std::uint32_t kIsDirectory = 0x80000000;  // in an entry's target: not a leaf
constexpr std::uint32_t kIsName = 0x80000000;       // in an entry's key: not a number

struct Entry {
    ResourceId id;
    std::string stored_name;   // as stored, case kept; empty for a number
    std::uint32_t target = 0;  // relative to the directory's start
    bool is_directory = false;
};

std::string upper_case(std::string text) {
    for (char &c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

class Reader {
  public:
    Reader(const Image &image, Directory directory)
        : image_(image), start_(image.offset_of(directory.address)) {}

    std::vector<PeResource> read() {
        for (const Entry &type : entries(0)) {
            for (const Entry &name : entries(table_of(type))) {
                for (const Entry &language : entries(table_of(name))) {
                    read_leaf(type, name, language);
                }
            }
        }
        return std::move(resources_);
    }

  private:
    static std::uint32_t table_of(const Entry &entry) {
        if (!entry.is_directory) {
            throw BinaryError("PE file is damaged: resource tree has fewer than three levels");
        }
        return entry.target;
    }

    std::vector<Entry> entries(std::uint32_t table) {
        const ByteView &file = image_.file();
        const std::uint64_t at = start_ + table;
        const std::uint32_t count =
            std::uint32_t{file.u16(at + 12)} + std::uint32_t{file.u16(at + 14)};
        seen_ += count;
        if (seen_ > kMostResources) throw BinaryError("PE file is damaged: too many resources");
        std::vector<Entry> list;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint64_t entry = at + 16 + 8 * std::uint64_t{i};
            list.push_back(make_entry(file.u32(entry), file.u32(entry + 4)));
        }
        return list;
    }

    Entry make_entry(std::uint32_t key, std::uint32_t target) const {
        Entry entry;
        if (key & kIsName) {
            const std::uint64_t at = start_ + (key & ~kIsName);
            entry.stored_name = image_.file().utf16(at + 2, image_.file().u16(at));
            entry.id.name = upper_case(entry.stored_name);
        } else {
            entry.id.number = key;
        }
        entry.is_directory = (target & kIsDirectory) != 0;
        entry.target = target & ~kIsDirectory;
        return entry;
    }

    void read_leaf(const Entry &type, const Entry &name, const Entry &language) {
        if (language.is_directory || !language.stored_name.empty()) {
            throw BinaryError("PE file is damaged: resource tree has more than three levels");
        }
        const ByteView &file = image_.file();
        const std::uint64_t leaf = start_ + language.target;
        const std::uint32_t size = file.u32(leaf + 4);
        total_ += size;
        if (total_ > kMostResourceBytes) throw BinaryError("PE file is damaged: resources too big");
        std::vector<std::uint8_t> bytes;
        if (size > 0) {
            const auto span = file.bytes(image_.offset_of(file.u32(leaf)), size);
            bytes.assign(span.begin(), span.end());
        }
        resources_.push_back({type.id, name.id,
                              static_cast<std::uint16_t>(language.id.number & 0xFFFF),
                              std::move(bytes), type.stored_name});
    }

    const Image &image_;
    std::uint64_t start_;
    std::vector<PeResource> resources_;
    std::uint32_t seen_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace

std::vector<PeResource> read_resources(const Image &image) {
    const Directory directory = image.directory(DirectoryIndex::resources);
    if (directory.address == 0) return {};
    return Reader(image, directory).read();
}

}  // namespace stage::pe
