// What is expected to be seen: pixels of the frame, and what the effect draws over it.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "stage/play/session_steps.h"
#include "stage/text/number_text.h"

namespace stage {
namespace {

/// A pixel of the frame as it is rendered, at the present resolution.
struct WantedPixel {
    std::string where;
    int x = 0, y = 0;
    std::uint32_t rgb = 0;  ///< 0xRRGGBB
    int within = 0;         ///< of each channel's code
};

std::uint32_t read_color(const JsonValue &value) {
    const std::string text = value.string();
    const bool digits = text.size() == 7 && text[0] == '#' &&
                        text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!digits) value.fail("expected a colour, \"#rrggbb\"");
    return static_cast<std::uint32_t>(std::strtoul(text.c_str() + 1, nullptr, 16));
}

WantedPixel read_pixel(const JsonValue &value) {
    value.only({"at", "color", "within"});
    WantedPixel pixel;
    pixel.where = value.where();
    std::tie(pixel.x, pixel.y) = value["at"].whole_pair(0, kMaxPictureSide - 1);
    pixel.rgb = read_color(value["color"]);
    if (const auto within = value.find("within")) pixel.within = within->number32(0, 255);
    return pixel;
}

bool is_near(std::uint32_t a, std::uint32_t b, int within) {
    for (const int shift : {0, 8, 16}) {
        const int difference =
            static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
        if (std::abs(difference) > within) return false;
    }
    return true;
}

void check_pixel(SessionPlayer &player, const WantedPixel &pixel, const ViewImage &image) {
    if (pixel.x >= image.width || pixel.y >= image.height) {
        throw SessionFileError(pixel.where + ": the frame has only " + std::to_string(image.width) +
                               "x" + std::to_string(image.height) + " pixels");
    }
    const std::uint32_t found = image.at(pixel.x, pixel.y);
    player.check(is_near(found, pixel.rgb, pixel.within), pixel.where, color_text(pixel.rgb),
                 color_text(found));
}

SessionAct pixels(const JsonValue &value) {
    std::vector<WantedPixel> list;
    for (const JsonValue &element : value.elements()) list.push_back(read_pixel(element));
    return [=](SessionPlayer &player) {
        const ViewImage &image = player.desk().view().image;
        for (const WantedPixel &pixel : list) check_pixel(player, pixel, image);
    };
}

SessionAct frame_size(const JsonValue &value) {
    const auto [width, height] = value.whole_pair(1, kMaxPictureSide);
    return [=, where = value.where()](SessionPlayer &player) {
        const ViewImage &image = player.desk().view().image;
        player.check(image.width == width && image.height == height, where,
                     std::to_string(width) + "x" + std::to_string(height),
                     std::to_string(image.width) + "x" + std::to_string(image.height));
    };
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// Each line needs only begin as wanted.
SessionAct drawn(const JsonValue &value) {
    std::vector<std::string> wanted;
    std::vector<std::string> places;
    for (const JsonValue &line : value.elements()) {
        wanted.push_back(line.string());
        places.push_back(line.where());
    }
    return [=, where = value.where()](SessionPlayer &player) {
        const std::vector<std::string> found = lines_of(to_text(player.desk().overlay()));
        player.check(found.size() == wanted.size(), where,
                     std::to_string(wanted.size()) + " primitives", std::to_string(found.size()));
        for (std::size_t i = 0; i < std::min(found.size(), wanted.size()); ++i) {
            player.check(found[i].starts_with(wanted[i]), places[i], wanted[i], found[i]);
        }
    };
}

constexpr ExpectRow kRows[] = {
    {"pixels", pixels},
    {"frame size", frame_size},
    {"drawn", drawn},
};

}  // namespace

std::span<const ExpectRow> view_expectations() {
    return kRows;
}

}  // namespace stage
