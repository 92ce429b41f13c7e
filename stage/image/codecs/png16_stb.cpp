#include "stage/image/codecs/png16.h"

#include <array>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "stage/image/codecs/packed_samples.h"

// Of stb_image_write, whose header does not declare it. Returns a zlib stream for free().
extern "C" unsigned char *stbi_zlib_compress(unsigned char *data, int data_len, int *out_len,
                                             int quality);

namespace stage {
namespace {

constexpr std::array<std::uint32_t, 256> crc_table() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t n = 0; n < 256; ++n) {
        std::uint32_t c = n;
        for (int bit = 0; bit < 8; ++bit) c = (c & 1) != 0 ? 0xEDB88320u ^ c >> 1 : c >> 1;
        table[n] = c;
    }
    return table;
}

// CRC-32 as PNG chunks carry it.
std::uint32_t crc_of(std::string_view bytes) {
    static constexpr auto kTable = crc_table();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char byte : bytes)
        crc = kTable[(crc ^ static_cast<std::uint8_t>(byte)) & 0xFF] ^ crc >> 8;
    return ~crc;
}

void append_u32(std::string &out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>(value >> shift & 0xFF);
}

void append_chunk(std::string &out, std::string_view type, std::string_view data) {
    append_u32(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out += type;
    out += data;
    append_u32(out, crc_of(std::string_view(out).substr(start)));
}

// Rows of big-endian samples, each byte the difference to the same byte of the pixel to the left
// (filter type 1), which compresses far better than the samples themselves.
std::string filtered_rows(const Picture &picture) {
    constexpr std::size_t kPixelSize = 8;
    const auto samples = packed_samples<std::uint16_t>(picture, 4);
    const std::size_t row_samples = static_cast<std::size_t>(picture.width) * 4;
    std::string rows;
    rows.reserve(samples.size() * 2 + static_cast<std::size_t>(picture.height));
    std::string row(row_samples * 2, '\0');
    for (std::size_t at = 0; at < samples.size(); at += row_samples) {
        for (std::size_t i = 0; i < row_samples; ++i) {
            row[i * 2] = static_cast<char>(samples[at + i] >> 8);
            row[i * 2 + 1] = static_cast<char>(samples[at + i] & 0xFF);
        }
        rows += '\1';
        rows += row.substr(0, kPixelSize);
        for (std::size_t i = kPixelSize; i < row.size(); ++i) {
            rows += static_cast<char>(row[i] - row[i - kPixelSize]);
        }
    }
    return rows;
}

std::string compressed(std::string bytes) {
    if (bytes.size() > INT_MAX)
        throw PictureError("the picture is too large for a 16-bit PNG file");
    int length = 0;
    const std::unique_ptr<unsigned char, decltype(&std::free)> data(
        stbi_zlib_compress(reinterpret_cast<unsigned char *>(bytes.data()),
                           static_cast<int>(bytes.size()), &length, 8),
        &std::free);
    if (!data) throw PictureError("there is not enough memory to compress the picture");
    return {reinterpret_cast<const char *>(data.get()), static_cast<std::size_t>(length)};
}

}  // namespace

std::string encode_png16(const Picture &picture) {
    std::string header;
    append_u32(header, static_cast<std::uint32_t>(picture.width));
    append_u32(header, static_cast<std::uint32_t>(picture.height));
    // 16 bits per channel, red-green-blue-alpha, the only compression and filter methods, no
    // interlace.
    header += std::string_view("\x10\x06\0\0\0", 5);
    std::string out = "\x89PNG\r\n\x1A\n";
    append_chunk(out, "IHDR", header);
    append_chunk(out, "IDAT", compressed(filtered_rows(picture)));
    append_chunk(out, "IEND", {});
    return out;
}

}  // namespace stage
