// What is wrong with a JSON text.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace stage {

/// The facts; every public format says them in words of its own.
struct JsonFault {
    enum class Kind {
        kOther,     ///< `text` is the reason
        kSyntax,    ///< the text is no JSON; `text` is the parser's reason
        kMissing,   ///< the object at `path` has no member called `text`
        kNotWhole,  ///< not a whole number, which must lie within `low` to `high`
        kOutside,   ///< a number not within `low` to `high`
    };

    Kind kind = Kind::kOther;
    std::string path{};  ///< of the value, for example "steps[3].drag.to"; "" is the whole text
    int line = 0;        ///< where the value begins, 1-based; 0 when nobody counted
    std::string text{};
    std::string low{}, high{};
    std::size_t byte = 0;  ///< kSyntax: how many were read, the wrong one included
};

/// what() is "line LINE: PATH: reason", without what is not known.
class JsonError : public std::runtime_error {
  public:
    explicit JsonError(const JsonFault &fault);
    const JsonFault &fault() const { return fault_; }

  private:
    JsonFault fault_;
};

/// The reason alone: "must lie within 1 to 5".
std::string reason_text(const JsonFault &fault);

/// Path of the member `name` of the object at `path`.
std::string member_path(const std::string &path, const std::string &name);

}  // namespace stage
