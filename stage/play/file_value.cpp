#include "stage/play/file_value.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace stage {
namespace {

std::string text_of(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", number);
    return text;
}

}  // namespace

std::string FileValue::where() const {
    const std::string line = std::to_string(file_.lines.line_of(path_));
    return file_.name + ":" + line + (path_.empty() ? "" : ": " + path_);
}

void FileValue::fail(const std::string &what) const {
    throw SessionFileError(where() + ": " + what);
}

std::optional<FileValue> FileValue::find(const std::string &name) const {
    if (!json_.is_object()) fail("expected an object");
    const auto found = json_.find(name);
    if (found == json_.end()) return std::nullopt;
    return FileValue(*found, path_.empty() ? name : path_ + "." + name, file_);
}

FileValue FileValue::operator[](const std::string &name) const {
    const auto found = find(name);
    if (!found) fail("\"" + name + "\" is missing");
    return *found;
}

std::vector<std::pair<std::string, FileValue>> FileValue::members() const {
    if (!json_.is_object()) fail("expected an object");
    if (json_.empty()) fail("is empty");
    std::vector<std::pair<std::string, FileValue>> found;
    for (const auto &[name, value] : json_.items()) {
        found.emplace_back(name,
                           FileValue(value, path_.empty() ? name : path_ + "." + name, file_));
    }
    return found;
}

void FileValue::only(std::initializer_list<const char *> known) const {
    if (!json_.is_object()) fail("expected an object");
    std::string list;
    for (const char *name : known) list += (list.empty() ? "" : ", ") + std::string(name);
    for (const auto &[name, value] : json_.items()) {
        if (std::ranges::find(known, name) != known.end()) continue;
        (*this)[name].fail("is not known here (" + list + ")");
    }
}

std::size_t FileValue::size() const {
    if (!json_.is_array()) fail("expected a list");
    return json_.size();
}

FileValue FileValue::at(std::size_t index) const {
    if (index >= size()) fail("has too few elements");
    return {json_[index], path_ + "[" + std::to_string(index) + "]", file_};
}

std::vector<FileValue> FileValue::elements() const {
    std::vector<FileValue> found;
    for (std::size_t i = 0; i < size(); ++i) found.push_back(at(i));
    return found;
}

std::int64_t FileValue::integer(std::int64_t low, std::int64_t high) const {
    const std::string range = std::to_string(low) + " to " + std::to_string(high);
    if (!json_.is_number_integer()) fail("expected a whole number from " + range);
    const bool too_large = json_.is_number_unsigned() &&
                           json_.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX);
    if (too_large || json_.get<std::int64_t>() < low || json_.get<std::int64_t>() > high) {
        fail("must lie within " + range);
    }
    return json_.get<std::int64_t>();
}

double FileValue::number(double low, double high) const {
    if (!json_.is_number()) fail("expected a number");
    const double value = json_.get<double>();
    if (!(value >= low && value <= high)) {
        fail("must lie within " + text_of(low) + " to " + text_of(high));
    }
    return value;
}

bool FileValue::boolean() const {
    if (!json_.is_boolean()) fail("expected true or false");
    return json_.get<bool>();
}

std::string FileValue::string() const {
    if (!json_.is_string()) fail("expected text");
    return json_.get<std::string>();
}

std::pair<double, double> FileValue::pair(double low, double high) const {
    if (!json_.is_array() || json_.size() != 2) fail("expected a list of two numbers");
    return {at(0).number(low, high), at(1).number(low, high)};
}

std::pair<int, int> FileValue::whole_pair(int low, int high) const {
    if (!json_.is_array() || json_.size() != 2) fail("expected a list of two whole numbers");
    return {at(0).number32(low, high), at(1).number32(low, high)};
}

std::string FileValue::typed() const {
    if (json_.is_string()) return string();
    if (json_.is_boolean() || json_.is_number()) return json_.dump();
    if (!json_.is_array()) fail("expected text, a number, true, false or a list of numbers");
    std::string text;
    for (const FileValue &element : elements()) {
        if (!element.is_number()) element.fail("expected a number");
        text += (text.empty() ? "" : ",") + element.json_.dump();
    }
    return text;
}

}  // namespace stage
