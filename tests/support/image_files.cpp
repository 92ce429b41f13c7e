#include "support/image_files.h"

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "support/paths.h"

namespace ks::test_support {
namespace {

using oracle::Depth;
using oracle::Image;

void append_ppm_row(std::string &bytes, const Image &image, int y) {
    for (int x = 0; x < image.width; ++x) {
        const oracle::Stored pixel = oracle::stored_pixel(image, x, y);
        for (std::size_t c = 1; c < 4; ++c) {
            const auto code = static_cast<std::uint32_t>(pixel[c]);
            if (image.depth == Depth::kWord) bytes.push_back(static_cast<char>(code >> 8));
            bytes.push_back(static_cast<char>(code & 0xFFu));
        }
    }
}

void append_pfm_row(std::string &bytes, const Image &image, int y) {
    for (int x = 0; x < image.width; ++x) {
        const oracle::Stored pixel = oracle::stored_pixel(image, x, y);
        for (std::size_t c = 1; c < 4; ++c) {
            const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(pixel[c]));
            for (unsigned shift = 0; shift < 32; shift += 8) {
                bytes.push_back(static_cast<char>((bits >> shift) & 0xFFu));
            }
        }
    }
}

std::string encoded(const Image &image) {
    const bool is_float = image.depth == Depth::kFloat;
    std::string bytes = is_float ? "PF\n" : "P6\n";
    bytes += std::to_string(image.width) + " " + std::to_string(image.height) + "\n";
    bytes += is_float ? "-1.0\n" : std::to_string(static_cast<int>(full_scale(image.depth))) + "\n";
    for (int row = 0; row < image.height; ++row) {
        if (is_float) {
            append_pfm_row(bytes, image, image.height - 1 - row);
        } else {
            append_ppm_row(bytes, image, row);
        }
    }
    return bytes;
}

}  // namespace

std::string write_picture(const std::string &stem, const Image &image) {
    const std::filesystem::path folder = std::filesystem::path(paths::build()) / "image-diff";
    const std::filesystem::path file =
        folder / (stem + (image.depth == Depth::kFloat ? ".pfm" : ".ppm"));
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const std::string bytes = encoded(image);
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream ? file.string() : "could not write " + file.string();
}

}  // namespace ks::test_support
