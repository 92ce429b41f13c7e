#include "stage/binary/version_resource.h"

#include "stage/binary/byte_view.h"

namespace stage {
namespace {

constexpr std::uint32_t kFixedInfoSignature = 0xFEEF04BD;

std::uint64_t round_up_4(std::uint64_t value) {
    return (value + 3) & ~std::uint64_t{3};
}

// One block of the resource: a header, a key, a value and, behind it, blocks of the same shape.
struct Block {
    ByteView bytes;  // the whole block; its length is the header's
    std::string key;
    std::uint64_t value = 0;         // offset in `bytes`
    std::uint64_t value_length = 0;  // bytes, or UTF-16 units when is_text
    bool is_text = false;
};

Block read_block(const ByteView &bytes, std::uint64_t offset) {
    Block block;
    const std::uint64_t length = bytes.u16(offset);
    if (length < 6) throw BinaryError("version resource is damaged: block without length");
    block.bytes = bytes.sub(offset, length);
    block.value_length = block.bytes.u16(2);
    block.is_text = block.bytes.u16(4) == 1;
    std::uint64_t units = 0;
    while (block.bytes.u16(6 + 2 * units) != 0) ++units;
    block.key = block.bytes.utf16(6, units);
    // Offsets are rounded from the block's start, since every block starts at a multiple of 4.
    block.value = round_up_4(6 + 2 * (units + 1));
    return block;
}

template <typename Visit>
void for_each_child(const Block &parent, std::uint64_t first, Visit visit) {
    for (std::uint64_t at = round_up_4(first); at < parent.bytes.size();) {
        const Block child = read_block(parent.bytes, at);
        visit(child);
        at += round_up_4(child.bytes.size());
    }
}

std::string text_value(const Block &block) {
    std::uint64_t units = block.value_length;
    while (units > 0 && block.bytes.u16(block.value + 2 * (units - 1)) == 0) --units;
    return block.bytes.utf16(block.value, units);
}

std::array<std::uint16_t, 4> version_quad(const ByteView &bytes, std::uint64_t offset) {
    return {bytes.u16(offset + 2), bytes.u16(offset), bytes.u16(offset + 6), bytes.u16(offset + 4)};
}

}  // namespace

std::string_view VersionResource::text(std::string_view name) const {
    for (const auto &[key, value] : strings) {
        if (key == name) return value;
    }
    return {};
}

VersionResource read_version_resource(std::span<const std::uint8_t> bytes) {
    const Block root = read_block(ByteView(bytes, "version resource"), 0);
    if (root.key != "VS_VERSION_INFO") {
        throw BinaryError("version resource is damaged: wrong key " + root.key);
    }
    VersionResource version;
    if (root.value_length > 0) {
        if (root.bytes.u32(root.value) != kFixedInfoSignature) {
            throw BinaryError("version resource is damaged: wrong signature");
        }
        version.file_version = version_quad(root.bytes, root.value + 8);
        version.product_version = version_quad(root.bytes, root.value + 16);
    }
    for_each_child(root, root.value + root.value_length, [&](const Block &info) {
        if (info.key != "StringFileInfo") return;
        for_each_child(info, info.value, [&](const Block &table) {
            for_each_child(table, table.value, [&](const Block &entry) {
                version.strings.emplace_back(entry.key, text_value(entry));
            });
        });
    });
    return version;
}

}  // namespace stage
