#include <algorithm>
#include <array>

#include "stage/binary/pipl.h"

namespace stage {
namespace {

enum class ValueForm { word, pair_of_words, short_flags, pascal_text, c_text };

// What the host expects of each property, in the order in which it expects them.
struct Expected {
    std::string_view key;
    ValueForm form;
    std::uint32_t longest_text;  // characters that the host keeps; 0 for no text or no limit
};

constexpr std::array<Expected, 12> kExpected = {{
    {"kind", ValueForm::word, 0},
    {"name", ValueForm::pascal_text, 47},
    {"catg", ValueForm::pascal_text, 31},
    {"8664", ValueForm::c_text, 0},
    {"ePVR", ValueForm::pair_of_words, 0},
    {"eSVR", ValueForm::pair_of_words, 0},
    {"eVER", ValueForm::word, 0},
    {"eINF", ValueForm::short_flags, 0},
    {"eGLO", ValueForm::word, 0},
    {"eGL2", ValueForm::word, 0},
    {"eMNA", ValueForm::pascal_text, 47},
    {"aeFL", ValueForm::word, 0},
}};

using Findings = std::vector<std::string>;

// Bytes of the value that mean something; those behind it are padding.
std::uint64_t meaningful_bytes(const PiplProperty &property, ValueForm form) {
    switch (form) {
        case ValueForm::pascal_text:
            return property.value.empty() ? 0 : std::uint64_t{1} + property.value[0];
        case ValueForm::c_text:
            return static_cast<std::uint64_t>(
                std::find(property.value.begin(), property.value.end(), std::uint8_t{0}) -
                property.value.begin());
        case ValueForm::short_flags:
            return 2;
        case ValueForm::word:
        case ValueForm::pair_of_words:
            return 4;
    }
    return 0;
}

bool length_fits(const PiplProperty &property, ValueForm form, std::uint64_t meaningful) {
    switch (form) {
        case ValueForm::pascal_text:
            return property.length >= meaningful && property.length <= (meaningful + 3) / 4 * 4;
        case ValueForm::c_text:
            return property.length > meaningful;
        case ValueForm::short_flags:
            return property.length == 2 || property.length == 4;
        case ValueForm::word:
        case ValueForm::pair_of_words:
            return property.length == 4;
    }
    return false;
}

void check_value(const PiplProperty &property, const Expected &expected, Findings &findings) {
    const std::string label = "property '" + property.key + "' ";
    const std::uint64_t meaningful = meaningful_bytes(property, expected.form);
    if (!length_fits(property, expected.form, meaningful)) {
        findings.push_back(label + "has length " + std::to_string(property.length));
    }
    const auto padding =
        property.value.begin() +
        static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(meaningful, property.value.size()));
    if (std::any_of(padding, property.value.end(), [](std::uint8_t byte) { return byte != 0; })) {
        findings.push_back(label + "has padding that is not zero");
    }
    if (expected.longest_text != 0 && meaningful > expected.longest_text + std::uint64_t{1}) {
        findings.push_back(label + "is longer than the host's " +
                           std::to_string(expected.longest_text) + " characters");
    }
}

void check_property(const PiplProperty &property, Findings &findings) {
    const std::string label = "property '" + property.key + "' ";
    if (property.vendor != "8BIM") findings.push_back(label + "has vendor " + property.vendor);
    if (property.id != 0) findings.push_back(label + "has id " + std::to_string(property.id));
    const auto expected =
        std::find_if(kExpected.begin(), kExpected.end(),
                     [&](const Expected &row) { return row.key == property.key; });
    if (expected == kExpected.end()) {
        findings.push_back(label + "is not one that an effect has");
    } else {
        check_value(property, *expected, findings);
    }
}

void check_order(const Pipl &pipl, Findings &findings) {
    for (const Expected &row : kExpected) {
        const auto count =
            std::count_if(pipl.properties.begin(), pipl.properties.end(),
                          [&](const PiplProperty &property) { return property.key == row.key; });
        if (count != 1) {
            findings.push_back("property '" + std::string(row.key) + "' occurs " +
                               std::to_string(count) + " times");
        }
    }
    const bool ordered = std::equal(
        pipl.properties.begin(), pipl.properties.end(), kExpected.begin(), kExpected.end(),
        [](const PiplProperty &property, const Expected &row) { return property.key == row.key; });
    if (!ordered) findings.push_back("properties are not the host's twelve in the host's order");
}

}  // namespace

std::vector<std::string> check_pipl(const Pipl &pipl, std::span<const std::uint8_t> bytes) {
    Findings findings;
    if (pipl.version != 1) {
        findings.push_back("list version is " + std::to_string(pipl.version) + ", not 1");
    }
    if (pipl.reserved != 0) findings.push_back("reserved field of the header is not 0");
    check_order(pipl, findings);
    std::uint64_t end = 10;
    for (const PiplProperty &property : pipl.properties) {
        check_property(property, findings);
        end = property.offset + 16 + property.value.size();
    }
    if (end != bytes.size()) {
        findings.push_back(std::to_string(bytes.size() - end) + " bytes behind the last property");
    }
    if (pipl.kind && *pipl.kind != "eFKT") findings.push_back("kind is " + *pipl.kind);
    if (pipl.entry_point && pipl.entry_point->empty()) findings.push_back("entry point is empty");
    return findings;
}

}  // namespace stage
