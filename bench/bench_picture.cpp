// Writes a picture of the scopes' benchmarks as raw red, green, blue samples from the top row down,
// 8 bits each or 16 (little endian, 0..65535): bench_picture NAME WIDTH HEIGHT BITS FILE
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

#include "scope_pictures.h"

namespace {

void write(const stage::Picture &picture, int bits, const std::string &file) {
    const float white = bits == 8 ? 255.0f : 65535.0f;
    std::string samples;
    samples.reserve(picture.argb.size() * 2);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        if (i % 4 == 0) continue;  // alpha
        const auto code = static_cast<std::uint32_t>(std::lround(picture.argb[i] * white));
        samples.push_back(static_cast<char>(code & 255u));
        if (bits == 16) samples.push_back(static_cast<char>(code >> 8));
    }
    std::ofstream out(file, std::ios::binary);
    out.write(samples.data(), static_cast<std::streamsize>(samples.size()));
    if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

}  // namespace

int main(int argc, char **argv) {
    try {
        if (argc != 6) throw std::runtime_error("usage: NAME WIDTH HEIGHT BITS FILE");
        const int bits = std::stoi(argv[4]);
        if (bits != 8 && bits != 16) throw std::runtime_error("BITS is 8 or 16");
        write(ks_bench::scope_picture(argv[1], std::stoi(argv[2]), std::stoi(argv[3])), bits,
              argv[5]);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bench_picture: %s\n", error.what());
        return 1;
    }
}
