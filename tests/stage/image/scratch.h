// A folder of its own for every test, and small pictures to put into it.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "stage/image/picture.h"

namespace stage::test {

namespace fs = std::filesystem;

class ScratchTest : public ::testing::Test {
  protected:
    ScratchTest() {
        folder_ =
            fs::temp_directory_path() / ("stage-image-" + std::to_string(std::random_device{}()));
        fs::create_directories(folder_);
    }
    ~ScratchTest() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    fs::path file(const std::string &name) const { return folder_ / name; }

    std::size_t files_in_folder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    static std::string bytes_of(const fs::path &path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    static void write_bytes(const fs::path &path, std::string_view bytes) {
        std::ofstream(path, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    fs::path folder_;
};

// Every 8-bit code in every channel, each channel in an order of its own.
inline Picture all_codes8() {
    Picture picture = make_picture(16, 16, SampleType::U8);
    for (int i = 0; i < 256; ++i) {
        const int codes[4] = {255 - i, i, i ^ 0x55, (i * 7) & 255};
        for (int c = 0; c < 4; ++c) {
            picture.argb[static_cast<std::size_t>(i * 4 + c)] =
                static_cast<float>(codes[c]) / 255.0f;
        }
    }
    return picture;
}

// Every one of the host's 16-bit codes in every channel; the last pixels repeat code 32768.
inline Picture all_codes16() {
    Picture picture = make_picture(257, 128, SampleType::HostU16);
    for (int i = 0; i < 257 * 128; ++i) {
        const int code = std::min(i, 32768);
        const int codes[4] = {32768 - code, code, code ^ (code < 32768 ? 0x5555 : 0), code};
        for (int c = 0; c < 4; ++c) {
            picture.argb[static_cast<std::size_t>(i * 4 + c)] =
                static_cast<float>(codes[c]) / 32768.0f;
        }
    }
    return picture;
}

// Opaque floats: ordinary, negative, over-range and tiny ones.
inline Picture opaque_floats() {
    Picture picture = make_picture(5, 3, SampleType::Float);
    const float values[] = {0.0f, -0.0f, 0.1f, -1.5f, 1234.5f, 1e-30f, 0.33333334f, 1.0f};
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = i % 4 == 0 ? 1.0f : values[i % 8] + static_cast<float>(i / 8) * 0.01f;
    }
    return picture;
}

// True when all floats have the same bits, so that NaN equals NaN and -0 differs from 0.
inline bool same_bits(const Picture &a, const Picture &b) {
    return a.width == b.width && a.height == b.height && a.argb.size() == b.argb.size() &&
           std::memcmp(a.argb.data(), b.argb.data(), a.argb.size() * sizeof(float)) == 0;
}

// Runs `f` and gives the message of the PictureError that it throws.
template <typename F>
std::string error_of(F f) {
    try {
        f();
    } catch (const PictureError &error) {
        return error.what();
    }
    ADD_FAILURE() << "no PictureError was thrown";
    return {};
}

}  // namespace stage::test
