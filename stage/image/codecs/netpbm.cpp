#include "stage/image/codecs/netpbm.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <utility>

#include "stage/image/sample_codes.h"

namespace stage::netpbm {
namespace {

constexpr std::array<PictureFormat, 2> kFormats = {{
    {"pam", "pam", AlphaStorage::Straight, SampleType::U8, SampleType::U16, SampleType::U16},
    {"pfm", "pfm", AlphaStorage::Straight, SampleType::Float, SampleType::Float, SampleType::Float},
}};

// Where the samples of a pixel go to in alpha, red, green, blue, by the number of channels.
constexpr std::array<std::array<int, 4>, 5> kGreyOrRgbToArgb = {{
    {},
    {-1, 0, 0, 0},
    {1, 0, 0, 0},
    {-1, 0, 1, 2},
    {3, 0, 1, 2},
}};

// The four samples of a pixel in the order of files: red, green, blue, alpha.
constexpr std::array<std::size_t, 4> kRgbaOfArgb = {1, 2, 3, 0};

// Reads the text before the samples.
class Header {
  public:
    explicit Header(std::string_view bytes) : rest_(bytes) {}

    // The next line without its end.
    std::string_view line() {
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos) throw PictureError("the header is cut off");
        const std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return text;
    }

    // The next word; exactly one blank after it is taken too.
    std::string_view word() {
        while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
        std::size_t length = 0;
        while (length < rest_.size() && !is_blank(rest_[length])) ++length;
        if (length == 0 || length == rest_.size()) throw PictureError("the header is cut off");
        const std::string_view text = rest_.substr(0, length);
        rest_.remove_prefix(length + 1);
        return text;
    }

    std::string_view rest() const { return rest_; }

  private:
    static bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    std::string_view rest_;
};

template <typename Number>
Number number_of(std::string_view text) {
    Number number{};
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        throw PictureError("\"" + std::string(text) + "\" in the header is not a number");
    }
    return number;
}

void check_length(std::string_view samples, const Picture &picture, int channels,
                  std::size_t sample_size) {
    const std::size_t needed =
        picture.argb.size() / 4 * static_cast<std::size_t>(channels) * sample_size;
    if (samples.size() < needed) {
        throw PictureError(
            fmt::format("the file is cut off: {} of {} bytes of samples", samples.size(), needed));
    }
}

// Fills rows of the picture from interleaved samples: `sample(i)` is the i-th one of the file.
template <typename F>
void fill(Picture &picture, int channels, bool bottom_first, F sample) {
    const auto &order = kGreyOrRgbToArgb[static_cast<std::size_t>(channels)];
    std::size_t at = 0;
    for (int row = 0; row < picture.height; ++row) {
        float *to = picture.at(0, bottom_first ? picture.height - 1 - row : row);
        for (int x = 0; x < picture.width; ++x, to += 4, at += static_cast<std::size_t>(channels)) {
            for (std::size_t c = 0; c < 4; ++c) {
                to[c] = order[c] < 0 ? 1.0f : sample(at + static_cast<std::size_t>(order[c]));
            }
        }
    }
}

Picture decode_pfm(Header header) {
    const std::string_view kind = header.word();
    const int channels = kind == "PF4" ? 4 : kind == "PF" ? 3 : 1;
    const int width = number_of<int>(header.word());
    const int height = number_of<int>(header.word());
    // A negative scale says that the samples are little-endian.
    const bool little = number_of<double>(header.word()) < 0;
    Picture picture = make_picture(width, height, SampleType::Float);
    const std::string_view samples = header.rest();
    check_length(samples, picture, channels, sizeof(float));
    fill(picture, channels, true, [&](std::size_t i) {
        std::uint32_t bits = 0;
        for (std::size_t b = 0; b < 4; ++b) {
            const auto byte = static_cast<std::uint8_t>(samples[i * 4 + (little ? 3 - b : b)]);
            bits = bits << 8 | byte;
        }
        return std::bit_cast<float>(bits);
    });
    return picture;
}

struct PamHeader {
    int width = 0;
    int height = 0;
    int depth = 0;
    int maxval = 0;
};

PamHeader read_pam_header(Header &header) {
    PamHeader values;
    const std::array<std::pair<std::string_view, int *>, 4> fields = {{{"WIDTH", &values.width},
                                                                       {"HEIGHT", &values.height},
                                                                       {"DEPTH", &values.depth},
                                                                       {"MAXVAL", &values.maxval}}};
    for (std::string_view line = header.line(); line != "ENDHDR"; line = header.line()) {
        const std::size_t blank = line.find(' ');
        const auto field =
            std::ranges::find(fields, line.substr(0, blank), [](auto &f) { return f.first; });
        if (field == fields.end()) continue;  // TUPLTYPE, comments
        if (blank == std::string_view::npos)
            throw PictureError("the header has a field without value");
        *field->second = number_of<int>(line.substr(blank + 1));
    }
    if (values.depth < 1 || values.depth > 4 || values.maxval < 1 || values.maxval > 65535) {
        throw PictureError(
            fmt::format("a PAM file with {} channels and the maximum {} is not possible",
                        values.depth, values.maxval));
    }
    return values;
}

Picture decode_pam(Header header) {
    header.line();
    const PamHeader values = read_pam_header(header);
    const SampleType native = values.maxval == kWhite16 ? SampleType::HostU16
                              : values.maxval > kWhite8 ? SampleType::U16
                                                        : SampleType::U8;
    Picture picture = make_picture(values.width, values.height, native);
    const std::string_view samples = header.rest();
    const std::size_t size = values.maxval > kWhite8 ? 2 : 1;
    check_length(samples, picture, values.depth, size);
    fill(picture, values.depth, false, [&](std::size_t i) {
        int code = 0;
        for (std::size_t b = 0; b < size; ++b) {
            code = code << 8 | static_cast<std::uint8_t>(samples[i * size + b]);
        }
        return value_of(code, values.maxval);
    });
    return picture;
}

bool opaque(const Picture &picture) {
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        if (picture.argb[i] != 1.0f) return false;
    }
    return true;
}

}  // namespace

std::span<const PictureFormat> formats() {
    return kFormats;
}

Picture decode(std::string_view bytes) {
    if (bytes.starts_with("P7\n")) return decode_pam(Header(bytes));
    if (bytes.starts_with("PF") || bytes.starts_with("Pf")) return decode_pfm(Header(bytes));
    throw PictureError("it is neither a PFM nor a PAM file");
}

std::string encode_pfm(const Picture &picture) {
    const std::size_t channels = opaque(picture) ? 3 : 4;
    std::string bytes = fmt::format("{}\n{} {}\n-1.0\n", channels == 3 ? "PF" : "PF4",
                                    picture.width, picture.height);
    bytes.reserve(bytes.size() + picture.argb.size() * sizeof(float));
    for (int y = picture.height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width; ++x) {
            for (std::size_t c = 0; c < channels; ++c) {
                const auto bits = std::bit_cast<std::uint32_t>(picture.at(x, y)[kRgbaOfArgb[c]]);
                for (int shift = 0; shift < 32; shift += 8) {
                    bytes += static_cast<char>(bits >> shift & 0xff);
                }
            }
        }
    }
    return bytes;
}

std::string encode_pam(const Picture &picture, int maximum) {
    std::string bytes =
        fmt::format("P7\nWIDTH {}\nHEIGHT {}\nDEPTH 4\nMAXVAL {}\nTUPLTYPE RGB_ALPHA\nENDHDR\n",
                    picture.width, picture.height, maximum);
    const bool wide = maximum > kWhite8;
    bytes.reserve(bytes.size() + picture.argb.size() * (wide ? 2 : 1));
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        for (const std::size_t c : kRgbaOfArgb) {
            const int code = code_of(picture.argb[i + c], maximum);
            if (wide) bytes += static_cast<char>(code >> 8);
            bytes += static_cast<char>(code & 0xff);
        }
    }
    return bytes;
}

}  // namespace stage::netpbm
