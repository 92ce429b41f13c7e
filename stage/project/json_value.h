// Reading JSON with errors that say where: internal to the project file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "stage/project/project.h"

namespace stage {

/// A value inside a file and the path to it, for example "items[2].width". Everything throws
/// ProjectError "PATH: what is wrong" (or just what is wrong at the top).
class JsonValue {
  public:
    JsonValue(const nlohmann::json &json, std::string path) : json_(json), path_(std::move(path)) {}

    /// Member of an object, which must be there.
    JsonValue operator[](const char *name) const;
    bool has(const char *name) const;
    /// Number of elements of an array.
    std::size_t size() const;
    JsonValue at(std::size_t index) const;

    std::int64_t integer(std::int64_t low, std::int64_t high) const;
    int number32(int low, int high) const { return static_cast<int>(integer(low, high)); }
    double number() const;
    bool boolean() const;
    std::string string() const;

    [[noreturn]] void fail(const std::string &what) const;

  private:
    const nlohmann::json &json_;
    std::string path_;
};

}  // namespace stage
