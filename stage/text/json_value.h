// Reading JSON files with errors that say what is wrong and where.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "stage/text/json_error.h"
#include "stage/text/line_index.h"

namespace stage {

class JsonValue;

/// A parsed text.
class JsonDocument {
  public:
    /// With kCounted errors tell lines, and members given twice and nesting beyond LineIndex's
    /// limit are refused; without, the last of equal members counts.
    enum class Lines { kCounted, kNotCounted };

    /// `name` is what where() calls the text, UTF-8. Throws JsonError.
    JsonDocument(const std::string &text, std::string name, Lines lines);
    ~JsonDocument();
    JsonDocument(const JsonDocument &) = delete;
    JsonDocument &operator=(const JsonDocument &) = delete;

    JsonValue root() const;
    const std::string &name() const { return name_; }
    /// 1-based; 0 when lines are not counted.
    int line_of(const std::string &path) const { return lines_ ? lines_->line_of(path) : 0; }

  private:
    std::string name_;
    std::unique_ptr<const nlohmann::ordered_json> json_;
    std::optional<LineIndex> lines_;
};

/// One value of a document, which must outlive it, and the path to it, for example
/// "steps[3].drag.to". Everything throws JsonError.
class JsonValue {
  public:
    JsonValue(const nlohmann::ordered_json &json, std::string path, const JsonDocument &document)
        : json_(json), path_(std::move(path)), document_(document) {}

    /// Member of an object, which must be there.
    JsonValue operator[](const std::string &name) const;
    std::optional<JsonValue> find(const std::string &name) const;
    /// Members of an object in the order of the file; at least one.
    std::vector<std::pair<std::string, JsonValue>> members() const;
    /// Refuses members of an object that are not `known`, and values that are no object.
    void only(std::initializer_list<const char *> known) const;

    /// Number of elements of a list.
    std::size_t size() const;
    JsonValue at(std::size_t index) const;
    std::vector<JsonValue> elements() const;

    bool is_object() const;
    bool is_list() const;
    bool is_string() const;
    bool is_number() const;

    std::int64_t integer(std::int64_t low, std::int64_t high) const;
    int number32(int low, int high) const { return static_cast<int>(integer(low, high)); }
    double number() const;
    /// Within low..high.
    double number(double low, double high) const;
    bool boolean() const;
    std::string string() const;
    /// A list of exactly two numbers.
    std::pair<double, double> pair(double low, double high) const;
    /// A list of exactly two whole numbers.
    std::pair<int, int> whole_pair(int low, int high) const;
    /// Text as it is, numbers and booleans as written, a list of numbers with commas between: what
    /// a user would type.
    std::string typed() const;

    /// "NAME:LINE: PATH".
    std::string where() const;
    [[noreturn]] void fail(const std::string &what) const;

  private:
    [[noreturn]] void fail(JsonFault fault) const;

    const nlohmann::ordered_json &json_;
    std::string path_;
    const JsonDocument &document_;
};

/// "NAME:LINE: PATH", without a line that is 0 and without an empty path.
std::string place_text(const std::string &name, int line, const std::string &path);

}  // namespace stage
