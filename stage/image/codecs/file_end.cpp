#include "stage/image/codecs/file_end.h"

#include <cstdint>

namespace stage {
namespace {

constexpr std::string_view kPngStart = "\x89PNG";
constexpr std::string_view kJpegStart = "\xFF\xD8\xFF";
constexpr std::size_t kPngSignature = 8;

// The big-endian number of `size` bytes at `at`; the caller has made sure that they exist.
std::size_t number_at(std::string_view bytes, std::size_t at, std::size_t size) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        number = number << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    }
    return number;
}

// Walks the chunks: length, type, data, checksum, until the one of the type IEND.
bool png_cut_off(std::string_view bytes) {
    std::size_t at = kPngSignature;
    while (bytes.size() >= at + 12) {
        const bool last = bytes.substr(at + 4, 4) == "IEND";
        at += 12 + number_at(bytes, at, 4);
        if (last) return at > bytes.size();
    }
    return true;
}

// Walks the segments to the end-of-image marker. Compressed data, which follows a start-of-scan
// segment without a length, is passed byte by byte: in it 0xFF is followed by 0 or by a restart
// marker (0xD0 to 0xD7).
bool jpeg_cut_off(std::string_view bytes) {
    constexpr unsigned kEndOfImage = 0xD9;
    std::size_t at = 2;
    while (at + 1 < bytes.size()) {
        const auto next = static_cast<std::uint8_t>(bytes[at + 1]);
        const bool in_data = bytes[at] != '\xFF' || next == 0 || next == 0xFF;
        if (in_data) {
            ++at;
        } else if (next == kEndOfImage) {
            return false;
        } else if (next >= 0xD0 && next <= 0xD8) {
            at += 2;
        } else {
            if (at + 4 > bytes.size()) return true;
            at += 2 + number_at(bytes, at + 2, 2);
        }
    }
    return true;
}

}  // namespace

bool may_be_cut_off(std::string_view start) {
    return start.starts_with(kPngStart) || start.starts_with(kJpegStart);
}

bool cut_off(std::string_view bytes) {
    if (bytes.starts_with(kPngStart)) return png_cut_off(bytes);
    if (bytes.starts_with(kJpegStart)) return jpeg_cut_off(bytes);
    return false;
}

}  // namespace stage
