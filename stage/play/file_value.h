// Values of a session file, read with errors that say where they stand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "stage/text/line_index.h"

namespace stage {

/// A session file is wrong, or a step of it cannot be done: "FILE:LINE: PATH: reason", one line.
class SessionFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What the values of one file share.
struct FileContext {
    std::string name;  ///< as in errors, UTF-8
    LineIndex lines;
};

/// One value and the path to it, for example "steps[3].drag.to". The JSON and the context must
/// outlive it. Everything throws SessionFileError.
class FileValue {
  public:
    FileValue(const nlohmann::ordered_json &json, std::string path, const FileContext &file)
        : json_(json), path_(std::move(path)), file_(file) {}

    /// Member of an object, which must be there.
    FileValue operator[](const std::string &name) const;
    std::optional<FileValue> find(const std::string &name) const;
    /// Members of an object in the order of the file; at least one.
    std::vector<std::pair<std::string, FileValue>> members() const;
    /// Refuses members of an object that are not `known`, and values that are no object.
    void only(std::initializer_list<const char *> known) const;

    /// Number of elements of a list.
    std::size_t size() const;
    FileValue at(std::size_t index) const;
    std::vector<FileValue> elements() const;

    bool is_object() const { return json_.is_object(); }
    bool is_list() const { return json_.is_array(); }
    bool is_string() const { return json_.is_string(); }
    bool is_number() const { return json_.is_number(); }
    bool is_boolean() const { return json_.is_boolean(); }

    std::int64_t integer(std::int64_t low, std::int64_t high) const;
    int number32(int low, int high) const { return static_cast<int>(integer(low, high)); }
    /// Within low..high; the default leaves out nothing that a layout could mean.
    double number(double low = -1e9, double high = 1e9) const;
    bool boolean() const;
    std::string string() const;
    /// A list of exactly two numbers.
    std::pair<double, double> pair(double low = -1e9, double high = 1e9) const;
    /// A list of exactly two whole numbers.
    std::pair<int, int> whole_pair(int low, int high) const;
    /// Text as it is, numbers and booleans as written, a list of numbers with commas between: what
    /// a user would type.
    std::string typed() const;

    /// "FILE:LINE: PATH".
    std::string where() const;
    [[noreturn]] void fail(const std::string &what) const;

  private:
    const nlohmann::ordered_json &json_;
    std::string path_;
    const FileContext &file_;
};

}  // namespace stage
