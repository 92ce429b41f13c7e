#include "oracle/record_oracle.h"

#include <algorithm>
#include <bit>
#include <string>

namespace ks::oracle {
namespace {

using ByteList = std::vector<std::uint8_t>;

void append_u16(ByteList &bytes, std::uint32_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value & 0xFFu));
    bytes.push_back(static_cast<std::uint8_t>((value >> 8) & 0xFFu));
}

void append_u32(ByteList &bytes, std::uint32_t value) {
    append_u16(bytes, value & 0xFFFFu);
    append_u16(bytes, value >> 16);
}

void append_float(ByteList &bytes, float value) {
    append_u32(bytes, std::bit_cast<std::uint32_t>(value));
}

void append_double(ByteList &bytes, double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    append_u32(bytes, static_cast<std::uint32_t>(bits & 0xFFFFFFFFu));
    append_u32(bytes, static_cast<std::uint32_t>(bits >> 32));
}

void append_reversed(ByteList &bytes, const std::string &code) {
    bytes.insert(bytes.end(), code.rbegin(), code.rend());
}

ByteList padded(ByteList value) {
    while (value.size() % 4 != 0) value.push_back(0);
    return value;
}

// Count byte, characters, zeros up to a multiple of 4.
ByteList pascal_string(const std::string &text) {
    ByteList value{static_cast<std::uint8_t>(text.size())};
    value.insert(value.end(), text.begin(), text.end());
    return padded(value);
}

ByteList number(std::uint32_t value) {
    ByteList bytes;
    append_u32(bytes, value);
    return bytes;
}

// Two 16-bit values, major first.
ByteList version_pair(std::uint32_t major, std::uint32_t minor) {
    ByteList bytes;
    append_u16(bytes, major);
    append_u16(bytes, minor);
    return bytes;
}

// Vendor and key stored byte-reversed, id 0, the stated length, the value padded to 4.
void append_property(ByteList &list, const std::string &key, std::uint32_t length,
                     const ByteList &value) {
    append_reversed(list, "8BIM");
    append_reversed(list, key);
    append_u32(list, 0);
    append_u32(list, length);
    const ByteList filled = padded(value);
    list.insert(list.end(), filled.begin(), filled.end());
}

bool empty(const Rect &rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

}  // namespace

std::vector<std::uint8_t> new_instance_record() {
    ByteList bytes{0, 0, 0, 0};
    append_float(bytes, 1.0f);
    for (int i = 0; i < 512; ++i) append_float(bytes, static_cast<float>(i) * 0.0019569471f);
    for (int j = 0; j < 256; ++j) {
        append_float(bytes, 1.0f + static_cast<float>(j + 1) * 0.03125f);
    }
    for (const int kind : {1, 2, 3, 0, 0}) bytes.push_back(static_cast<std::uint8_t>(kind));
    bytes.push_back(3);
    append_u16(bytes, 0);
    append_double(bytes, 1.0);
    append_u32(bytes, 0);
    return bytes;
}

std::vector<std::uint8_t> restored_instance_record(const std::array<std::uint8_t, 8> &flat) {
    ByteList bytes = new_instance_record();
    bytes[0] = flat[0];
    for (std::size_t i = 0; i < 5; ++i) bytes[3080 + i] = flat[1 + i];
    bytes[3085] = flat[6];
    return bytes;
}

std::array<std::uint8_t, 8> flat_record(std::uint8_t state, const std::array<std::int8_t, 5> &order,
                                        std::int8_t count) {
    std::array<std::uint8_t, 8> flat{};
    flat[0] = state;
    for (std::size_t i = 0; i < 5; ++i) flat[1 + i] = static_cast<std::uint8_t>(order[i]);
    flat[6] = static_cast<std::uint8_t>(count);
    flat[7] = 1;
    return flat;
}

Rect united(const Rect &destination, const Rect &source) {
    if (empty(destination)) return source;
    if (empty(source)) return destination;
    return {std::min(destination.left, source.left), std::min(destination.top, source.top),
            std::max(destination.right, source.right), std::max(destination.bottom, source.bottom)};
}

std::vector<std::uint8_t> property_list() {
    ByteList kind;
    append_reversed(kind, "eFKT");
    const std::string entry = "EntryPointFunc";
    ByteList entry_name(entry.begin(), entry.end());
    entry_name.push_back(0);

    ByteList list;
    append_u16(list, 1);
    append_u32(list, 0);
    append_u32(list, 12);
    append_property(list, "kind", 4, kind);
    append_property(list, "name", 20, pascal_string("Kestrel Scopes 2"));
    append_property(list, "catg", 20, pascal_string("Brindlemoor Studio"));
    append_property(list, "8664", 16, entry_name);
    append_property(list, "ePVR", 4, version_pair(2, 0));
    append_property(list, "eSVR", 4, version_pair(13, 14));
    append_property(list, "eVER", 4, number(0x00101E01));
    append_property(list, "eINF", 2, {0, 0});
    append_property(list, "eGLO", 4, number(0x06008010));
    append_property(list, "eGL2", 4, number(0x00001408));
    append_property(list, "eMNA", 20, pascal_string("KS_KestrelMonitor"));
    append_property(list, "aeFL", 4, number(0));
    return list;
}

}  // namespace ks::oracle
