#include "stage/text/json_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "stage/text/number_text.h"

namespace stage {
namespace {

using Json = nlohmann::ordered_json;
using Kind = JsonFault::Kind;

/// The parser's reason, without its own name and place: "... at line 3, column 5: REASON".
std::string reason_of(const Json::parse_error &error) {
    const std::string text = error.what();
    const std::size_t column = text.find(", column ");
    const std::size_t reason = column == std::string::npos ? column : text.find(": ", column);
    return reason == std::string::npos ? "syntax error" : text.substr(reason + 2);
}

/// The line that byte number `byte` of the text is on, both 1-based.
int line_at(const std::string &text, std::size_t byte) {
    const std::size_t end = std::min(text.size(), byte == 0 ? 0 : byte - 1);
    const auto breaks =
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    return static_cast<int>(1 + breaks);
}

Json parse(const std::string &text, JsonDocument::Lines lines) {
    const bool counted = lines == JsonDocument::Lines::kCounted;
    try {
        return Json::parse(text);
    } catch (const Json::parse_error &error) {
        throw JsonError({.kind = Kind::kSyntax,
                         .line = counted ? line_at(text, error.byte) : 0,
                         .text = reason_of(error),
                         .byte = error.byte});
    } catch (const Json::out_of_range &) {
        throw JsonError({.text = "a number is too large"});
    }
}

}  // namespace

JsonDocument::JsonDocument(const std::string &text, std::string name, Lines lines)
    : name_(std::move(name)), json_(std::make_unique<const Json>(parse(text, lines))) {
    if (lines == Lines::kCounted) lines_.emplace(text);
}

JsonDocument::~JsonDocument() = default;

JsonValue JsonDocument::root() const {
    return {*json_, "", *this};
}

std::string place_text(const std::string &name, int line, const std::string &path) {
    std::string text = name;
    if (line > 0) text += fmt::format(":{}", line);
    if (!path.empty()) text += ": " + path;
    return text;
}

std::string JsonValue::where() const {
    return place_text(document_.name(), document_.line_of(path_), path_);
}

void JsonValue::fail(JsonFault fault) const {
    fault.path = path_;
    fault.line = document_.line_of(path_);
    throw JsonError(fault);
}

void JsonValue::fail(const std::string &what) const {
    fail(JsonFault{.text = what});
}

std::optional<JsonValue> JsonValue::find(const std::string &name) const {
    if (!json_.is_object()) fail("expected an object");
    const auto found = json_.find(name);
    if (found == json_.end()) return std::nullopt;
    return JsonValue(*found, member_path(path_, name), document_);
}

JsonValue JsonValue::operator[](const std::string &name) const {
    const auto found = find(name);
    if (!found) fail(JsonFault{.kind = Kind::kMissing, .text = name});
    return *found;
}

std::vector<std::pair<std::string, JsonValue>> JsonValue::members() const {
    if (!json_.is_object()) fail("expected an object");
    if (json_.empty()) fail("is empty");
    std::vector<std::pair<std::string, JsonValue>> found;
    for (const auto &[name, value] : json_.items()) {
        found.emplace_back(name, JsonValue(value, member_path(path_, name), document_));
    }
    return found;
}

void JsonValue::only(std::initializer_list<const char *> known) const {
    if (!json_.is_object()) fail("expected an object");
    for (const auto &[name, value] : json_.items()) {
        if (std::ranges::find(known, name) != known.end()) continue;
        (*this)[name].fail(fmt::format("is not known here ({})", fmt::join(known, ", ")));
    }
}

std::size_t JsonValue::size() const {
    if (!json_.is_array()) fail("expected a list");
    return json_.size();
}

JsonValue JsonValue::at(std::size_t index) const {
    if (index >= size()) fail("has too few elements");
    return {json_[index], fmt::format("{}[{}]", path_, index), document_};
}

std::vector<JsonValue> JsonValue::elements() const {
    std::vector<JsonValue> found;
    for (std::size_t i = 0; i < size(); ++i) found.push_back(at(i));
    return found;
}

bool JsonValue::is_object() const {
    return json_.is_object();
}

bool JsonValue::is_list() const {
    return json_.is_array();
}

bool JsonValue::is_string() const {
    return json_.is_string();
}

bool JsonValue::is_number() const {
    return json_.is_number();
}

std::int64_t JsonValue::integer(std::int64_t low, std::int64_t high) const {
    const auto refuse = [&](Kind kind) {
        fail(JsonFault{.kind = kind, .low = std::to_string(low), .high = std::to_string(high)});
    };
    if (!json_.is_number_integer()) refuse(Kind::kNotWhole);
    constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
    if (json_.is_number_unsigned() && json_.get<std::uint64_t>() > kMost) refuse(Kind::kOutside);
    const auto value = json_.get<std::int64_t>();
    if (value < low || value > high) refuse(Kind::kOutside);
    return value;
}

double JsonValue::number() const {
    if (!json_.is_number()) fail("expected a number");
    return json_.get<double>();
}

double JsonValue::number(double low, double high) const {
    const double value = number();
    if (!(value >= low && value <= high)) {
        fail(JsonFault{.kind = Kind::kOutside, .low = number_text(low), .high = number_text(high)});
    }
    return value;
}

bool JsonValue::boolean() const {
    if (!json_.is_boolean()) fail("expected true or false");
    return json_.get<bool>();
}

std::string JsonValue::string() const {
    if (!json_.is_string()) fail("expected text");
    return json_.get<std::string>();
}

std::pair<double, double> JsonValue::pair(double low, double high) const {
    if (!json_.is_array() || json_.size() != 2) fail("expected a list of two numbers");
    return {at(0).number(low, high), at(1).number(low, high)};
}

std::pair<int, int> JsonValue::whole_pair(int low, int high) const {
    if (!json_.is_array() || json_.size() != 2) fail("expected a list of two whole numbers");
    return {at(0).number32(low, high), at(1).number32(low, high)};
}

std::string JsonValue::typed() const {
    if (json_.is_string()) return string();
    if (json_.is_boolean() || json_.is_number()) return json_.dump();
    if (!json_.is_array()) fail("expected text, a number, true, false or a list of numbers");
    std::string text;
    for (const JsonValue &element : elements()) {
        if (!element.is_number()) element.fail("expected a number");
        text += (text.empty() ? "" : ",") + element.json_.dump();
    }
    return text;
}

}  // namespace stage
