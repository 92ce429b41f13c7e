#include "kestrel-stage/verbs/job_text.h"

#include <charconv>
#include <stdexcept>
#include <vector>

namespace stage_cli {
namespace {

std::vector<int> numbers(const std::string &text, char separator) {
    std::vector<int> values;
    const char *at = text.data();
    const char *const end = at + text.size();
    while (true) {
        int value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc{}) return {};
        values.push_back(value);
        if (next == end) return values;
        if (*next != separator) return {};
        at = next + 1;
    }
}

[[noreturn]] void refuse(const std::string &text, const char *want) {
    throw std::runtime_error("\"" + text + "\" is wrong: " + want);
}

bool within(int value, int low, int high) {
    return value >= low && value <= high;
}

Pair one_or_two(const std::string &text, char separator, int default_second, int high,
                const char *want) {
    const std::vector<int> values = numbers(text, separator);
    if (values.empty() || values.size() > 2) refuse(text, want);
    const Pair pair{values[0], values.size() == 2   ? values[1]
                               : default_second > 0 ? default_second
                                                    : values[0]};
    if (!within(pair.first, 1, high) || !within(pair.second, 1, high)) refuse(text, want);
    return pair;
}

}  // namespace

Pair parse_downsample(const std::string &text) {
    return one_or_two(text, 'x', 0, 100, "--downsample takes N or NxM, each from 1 to 100");
}

Pair parse_ratio(const std::string &text) {
    return one_or_two(text, '/', 1, 100000, "--par takes N or N/D, each from 1 to 100000");
}

Pair parse_size(const std::string &text) {
    const std::vector<int> values = numbers(text, 'x');
    if (values.size() != 2 || !within(values[0], 1, 30000) || !within(values[1], 1, 30000)) {
        refuse(text, "--size takes WIDTHxHEIGHT, each from 1 to 30000");
    }
    return {values[0], values[1]};
}

PF_LRect parse_region(const std::string &text) {
    const std::vector<int> values = numbers(text, ',');
    if (values.size() != 4 || values[0] >= values[2] || values[1] >= values[3]) {
        refuse(text, "--region takes LEFT,TOP,RIGHT,BOTTOM with something inside");
    }
    return {values[0], values[1], values[2], values[3]};
}

}  // namespace stage_cli
