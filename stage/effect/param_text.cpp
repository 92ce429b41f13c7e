// Finding parameters by name and turning text into values: the messages a user of the command line
// sees.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "hostapi/constants.h"
#include "stage/effect/param_catalog.h"
#include "stage/text/number_text.h"

namespace stage {
namespace {

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](unsigned char left, unsigned char right) {
        return std::tolower(left) == std::tolower(right);
    });
}

/// True when `path` is `tail` or ends in "/" + tail.
bool ends_with_part(const std::string &path, std::string_view tail) {
    if (path.size() < tail.size()) return false;
    const std::string_view end = std::string_view(path).substr(path.size() - tail.size());
    if (!equal_ignoring_case(end, tail)) return false;
    return path.size() == tail.size() || path[path.size() - tail.size() - 1] == '/';
}

bool parse_number(std::string_view text, double *number) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
    return error == std::errc{} && end == text.data() + text.size() && std::isfinite(*number);
}

std::string choice_list(const ParamInfo &info) {
    std::string list;
    for (int choice = 1; choice <= static_cast<int>(info.choices.size()); ++choice) {
        if (info.is_separator(choice)) continue;
        if (!list.empty()) list += ", ";
        list += std::to_string(choice) + " " +
                quoted(info.choices[static_cast<std::size_t>(choice - 1)]);
    }
    return list;
}

[[noreturn]] void bad_value(const ParamInfo &info, std::string_view text, const std::string &want) {
    throw std::runtime_error(quoted(info.path) + " cannot be " + quoted(text) + ": " + want);
}

double parse_popup(const ParamInfo &info, std::string_view text) {
    for (int choice = 1; choice <= static_cast<int>(info.choices.size()); ++choice) {
        if (info.is_separator(choice)) continue;
        if (equal_ignoring_case(info.choices[static_cast<std::size_t>(choice - 1)], text)) {
            return choice;
        }
    }
    double number = 0;
    if (parse_number(text, &number) && number == std::floor(number) && number >= 1 &&
        number <= static_cast<double>(info.choices.size()) &&
        !info.is_separator(static_cast<int>(number))) {
        return number;
    }
    bad_value(info, text, "choose one of " + choice_list(info));
}

double parse_checkbox(const ParamInfo &info, std::string_view text) {
    for (const char *yes : {"on", "true", "yes", "1"}) {
        if (equal_ignoring_case(text, yes)) return 1;
    }
    for (const char *no : {"off", "false", "no", "0"}) {
        if (equal_ignoring_case(text, no)) return 0;
    }
    bad_value(info, text, "say on or off");
}

double parse_slider(const ParamInfo &info, std::string_view text) {
    const PF_FloatSliderDef &slider = info.def.u.fs_d;
    // The limits are single floats; what a user types for one of them must count as inside.
    const double low = std::min<double>(
        slider.valid_min, std::strtod(number_text(slider.valid_min).c_str(), nullptr));
    const double high = std::max<double>(
        slider.valid_max, std::strtod(number_text(slider.valid_max).c_str(), nullptr));
    const std::string range = "it must be a number from " + number_text(slider.valid_min) + " to " +
                              number_text(slider.valid_max);
    double number = 0;
    std::string_view digits = text;
    if ((slider.display_flags & PF_ValueDisplayFlag_PERCENT) != 0 && digits.ends_with('%')) {
        digits.remove_suffix(1);
    }
    if (!parse_number(digits, &number) || number < low || number > high) {
        bad_value(info, text, range);
    }
    return number;
}

bool parse_coordinate(std::string_view text, int size, double *pixels) {
    if (text.ends_with('%')) {
        text.remove_suffix(1);
        if (!parse_number(text, pixels)) return false;
        *pixels *= size / 100.0;
        return true;
    }
    return parse_number(text, pixels);
}

ParamValue parse_point(const ParamInfo &info, std::string_view text, int width, int height) {
    const std::size_t comma = text.find(',');
    ParamValue value;
    if (comma == std::string_view::npos ||
        !parse_coordinate(text.substr(0, comma), width, &value.x) ||
        !parse_coordinate(text.substr(comma + 1), height, &value.y)) {
        bad_value(info, text, "say x,y in layer pixels, or x%,y% of the layer");
    }
    if (info.def.u.td.restrict_bounds &&
        (value.x < 0 || value.x > width || value.y < 0 || value.y > height)) {
        bad_value(info, text,
                  "the point must lie on the layer, 0,0 to " + std::to_string(width) + "," +
                      std::to_string(height));
    }
    return value;
}

ParamValue parse_color(const ParamInfo &info, std::string_view text) {
    unsigned int red = 0, green = 0, blue = 0;
    char rest = 0;
    const std::string copy(text);
    const bool hex = copy.size() == 7 &&
                     std::sscanf(copy.c_str(), "#%2x%2x%2x%c", &red, &green, &blue, &rest) == 3;
    const bool list =
        !hex && std::sscanf(copy.c_str(), "%3u,%3u,%3u%c", &red, &green, &blue, &rest) == 3;
    if ((!hex && !list) || red > 255 || green > 255 || blue > 255) {
        bad_value(info, text, "say #rrggbb, or red,green,blue from 0 to 255");
    }
    ParamValue value;
    value.color = {255, static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                   static_cast<std::uint8_t>(blue)};
    return value;
}

}  // namespace

int ParamCatalog::find(std::string_view name) const {
    double number = 0;
    if (parse_number(name, &number)) {
        if (number == std::floor(number) && number >= 1 && number < count() &&
            has_value(at(static_cast<int>(number)).def)) {
            return static_cast<int>(number);
        }
        throw std::runtime_error("there is no parameter with index " + std::string(name) +
                                 " that has a value (1 to " + std::to_string(count() - 1) + ")");
    }
    std::vector<int> found, similar;
    for (int index = 1; index < count(); ++index) {
        const ParamInfo &info = at(index);
        if (!has_value(info.def)) continue;
        if (ends_with_part(info.path, name)) found.push_back(index);
        const std::string_view last = name.substr(name.rfind('/') + 1);
        if (equal_ignoring_case(info.name, last)) similar.push_back(index);
    }
    if (found.size() == 1) return found.front();
    const std::vector<int> &listed = found.empty() ? similar : found;
    std::string message = found.empty() ? "there is no parameter " + quoted(name)
                                        : quoted(name) + " is the name of several parameters";
    if (!listed.empty()) {
        message += "; say one of ";
        for (std::size_t i = 0; i < listed.size(); ++i) {
            message += (i == 0 ? "" : ", ") + quoted(at(listed[i]).path);
        }
    } else {
        message += " (the verb \"params\" lists them all)";
    }
    throw std::runtime_error(message);
}

ParamValue ParamCatalog::parse(int index, std::string_view text, int width, int height) const {
    const ParamInfo &info = at(index);
    ParamValue value;
    switch (info.def.param_type) {
        case PF_Param_POPUP:
            value.number = parse_popup(info, text);
            return value;
        case PF_Param_CHECKBOX:
            value.number = parse_checkbox(info, text);
            return value;
        case PF_Param_FLOAT_SLIDER:
            value.number = parse_slider(info, text);
            return value;
        case PF_Param_POINT:
            return parse_point(info, text, width, height);
        case PF_Param_COLOR:
            return parse_color(info, text);
        case PF_Param_LAYER:
            throw std::runtime_error(quoted(info.path) +
                                     " is a layer, which only a project can name");
        default:
            throw std::runtime_error(quoted(info.path) + " has no value to set");
    }
}

std::string ParamCatalog::to_text(int index, const ParamValue &value) const {
    const ParamInfo &info = at(index);
    switch (info.def.param_type) {
        case PF_Param_POPUP: {
            const int choice = static_cast<int>(value.number);
            if (choice < 1 || choice > static_cast<int>(info.choices.size())) return "?";
            return info.choices[static_cast<std::size_t>(choice - 1)];
        }
        case PF_Param_CHECKBOX:
            return value.number != 0 ? "on" : "off";
        case PF_Param_FLOAT_SLIDER:
            return number_text(value.number);
        case PF_Param_POINT:
            return "(" + number_text(value.x) + ", " + number_text(value.y) + ")";
        case PF_Param_COLOR:
            return color_text(std::uint32_t{value.color[1]} << 16 |
                              std::uint32_t{value.color[2]} << 8 | value.color[3]);
        case PF_Param_LAYER:
            return value.layer == 0 ? "none" : std::to_string(value.layer);
        default:
            return "";
    }
}

}  // namespace stage
