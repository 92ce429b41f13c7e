#include "stage/project/json_value.h"

namespace stage {

void JsonValue::fail(const std::string &what) const {
    throw ProjectError(path_.empty() ? what : path_ + ": " + what);
}

JsonValue JsonValue::operator[](const char *name) const {
    if (!json_.is_object()) fail("expected an object");
    const auto found = json_.find(name);
    const std::string path = path_.empty() ? name : path_ + "." + name;
    if (found == json_.end()) throw ProjectError(path + ": is missing");
    return {*found, path};
}

bool JsonValue::has(const char *name) const {
    return json_.is_object() && json_.contains(name);
}

std::size_t JsonValue::size() const {
    if (!json_.is_array()) fail("expected a list");
    return json_.size();
}

JsonValue JsonValue::at(std::size_t index) const {
    if (index >= size()) fail("has too few elements");
    return {json_[index], path_ + "[" + std::to_string(index) + "]"};
}

std::int64_t JsonValue::integer(std::int64_t low, std::int64_t high) const {
    const std::string range = std::to_string(low) + ".." + std::to_string(high);
    if (!json_.is_number_integer()) fail("expected a whole number " + range);
    const bool too_large = json_.is_number_unsigned() &&
                           json_.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX);
    if (too_large || json_.get<std::int64_t>() < low || json_.get<std::int64_t>() > high) {
        fail("is outside " + range);
    }
    return json_.get<std::int64_t>();
}

double JsonValue::number() const {
    if (!json_.is_number()) fail("expected a number");
    return json_.get<double>();
}

bool JsonValue::boolean() const {
    if (!json_.is_boolean()) fail("expected true or false");
    return json_.get<bool>();
}

std::string JsonValue::string() const {
    if (!json_.is_string()) fail("expected text");
    return json_.get<std::string>();
}

}  // namespace stage
