#include "oracle/pixel_oracle.h"

#include <cmath>

namespace ks::oracle {
namespace {

// min(scaled, limit) truncated toward zero, then reduced to the width of the component.
std::uint32_t truncated_component(float scaled, float limit, double modulus) {
    if (std::isnan(scaled)) return 0;
    const double bounded = scaled < limit ? scaled : limit;
    if (std::isinf(bounded)) return 0;
    const double remainder = std::fmod(std::trunc(bounded), modulus);
    return static_cast<std::uint32_t>(remainder < 0.0 ? remainder + modulus : remainder);
}

}  // namespace

Colour colour_from_bytes(const Bytes &pixel) {
    Colour colour{};
    for (std::size_t c = 0; c < 4; ++c) colour[c] = static_cast<float>(pixel[c]) * 0.003921569f;
    return colour;
}

Colour colour_from_words(const Words &pixel) {
    Colour colour{};
    for (std::size_t c = 0; c < 4; ++c) colour[c] = static_cast<float>(pixel[c]) * 3.0517578e-5f;
    return colour;
}

Bytes bytes_from_colour(const Colour &colour) {
    Bytes pixel{};
    for (std::size_t c = 0; c < 4; ++c) {
        pixel[c] =
            static_cast<std::uint8_t>(truncated_component(colour[c] * 255.0f, 255.0f, 256.0));
    }
    return pixel;
}

Words words_from_colour(const Colour &colour) {
    Words pixel{};
    for (std::size_t c = 0; c < 4; ++c) {
        pixel[c] = static_cast<std::uint16_t>(
            truncated_component(colour[c] * 32768.0f, 32768.0f, 65536.0));
    }
    return pixel;
}

Bytes bytes_from_words(const Words &pixel) {
    Bytes bytes{};
    for (std::size_t c = 0; c < 4; ++c) {
        const float scaled = static_cast<float>(pixel[c]) * 0.0077819824f;
        bytes[c] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(scaled) & 0xFFu);
    }
    return bytes;
}

Colour load_colour(const Image &image, int x, int y) {
    const std::size_t at = component_index(image, x, y);
    if (image.depth == Depth::kByte) {
        const std::uint8_t *p = image.bytes8.data() + at;
        return colour_from_bytes({p[0], p[1], p[2], p[3]});
    }
    if (image.depth == Depth::kWord) {
        const std::uint16_t *p = image.words16.data() + at;
        return colour_from_words({p[0], p[1], p[2], p[3]});
    }
    const float *p = image.floats.data() + at;
    return {p[0], p[1], p[2], p[3]};
}

void save_colour(Image &image, int x, int y, const Colour &colour) {
    const std::size_t at = component_index(image, x, y);
    const Bytes bytes = bytes_from_colour(colour);
    const Words words = words_from_colour(colour);
    for (std::size_t c = 0; c < 4; ++c) {
        if (image.depth == Depth::kByte) image.bytes8[at + c] = bytes[c];
        if (image.depth == Depth::kWord) image.words16[at + c] = words[c];
        if (image.depth == Depth::kFloat) image.floats[at + c] = colour[c];
    }
}

GammaTables linear_tables() {
    GammaTables tables{};
    for (std::size_t i = 0; i < 512; ++i) tables[i] = static_cast<float>(i) * 0.0019569471f;
    for (std::size_t j = 0; j < 256; ++j) {
        tables[512 + j] = 1.0f + static_cast<float>(j + 1) * 0.03125f;
    }
    return tables;
}

GammaTables gamma_tables(double gamma) {
    const float inverse_gamma = static_cast<float>(1.0 / gamma);
    GammaTables tables = linear_tables();
    for (std::size_t i = 1; i < tables.size(); ++i) {
        const double base = tables[i];
        tables[i] = static_cast<float>(std::pow(base, static_cast<double>(inverse_gamma)));
    }
    return tables;
}

float gamma_lookup(const GammaTables &tables, float value) {
    if (!(value > 0.0f) || value >= 8.0f) return value;
    if (value <= 1.0f) return tables[static_cast<std::size_t>(value * 512.0f)];
    return tables[512 + static_cast<std::size_t>((value - 1.0f) * 32.0f)];
}

float luma(const Colour &colour, int luma_math) {
    const float red = colour[1];
    const float green = colour[2];
    const float blue = colour[3];
    if (luma_math == 2) return 0.2126f * red + 0.7152f * green + 0.0722f * blue;
    return 0.299f * red + 0.587f * green + 0.114f * blue;
}

Colour view_colour(const Colour &in, const ViewSettings &settings, const GammaTables &tables) {
    const float gain = static_cast<float>(settings.gain);
    const float y = luma(in, settings.luma_math);
    const auto grey = [&](float value) { return Colour{in[0], value, value, value}; };
    switch (settings.view) {
        case 1:
            return {in[0], gamma_lookup(tables, in[1]) * gain, gamma_lookup(tables, in[2]) * gain,
                    gamma_lookup(tables, in[3]) * gain};
        case 2: {
            const float value = gamma_lookup(tables, in[0]) * gain;
            return {1.0f, value, value, value};
        }
        case 3:
            return grey(settings.apply_curve == 1 ? gamma_lookup(tables, y) * gain : y);
        case 4:
            return grey(in[1]);
        case 5:
            return grey(in[2]);
        case 6:
            return grey(in[3]);
        case 7:
            return grey((in[3] - y + 1.0f) * 0.5f);
        case 8:
            return grey((in[1] - y) * 0.6f + 0.5f);
        default:
            return in;
    }
}

Image convert_view(const Image &source, int view, double gamma, double gain, int luma_math,
                   int apply_curve) {
    const ViewSettings settings{view, gamma, gain, luma_math, apply_curve};
    const GammaTables tables = gamma_tables(gamma);
    Image result = make_image(source.width, source.height, source.depth);
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            save_colour(result, x, y, view_colour(load_colour(source, x, y), settings, tables));
        }
    }
    return result;
}

}  // namespace ks::oracle
