#include "stage/text/json_error.h"

#include <fmt/format.h>

namespace stage {
namespace {

using Kind = JsonFault::Kind;

std::string whole_text(const JsonFault &fault) {
    std::string text;
    if (fault.line > 0) text += fmt::format("line {}: ", fault.line);
    if (!fault.path.empty()) text += fault.path + ": ";
    return text + reason_text(fault);
}

}  // namespace

JsonError::JsonError(const JsonFault &fault)
    : std::runtime_error(whole_text(fault)), fault_(fault) {}

std::string reason_text(const JsonFault &fault) {
    switch (fault.kind) {
        case Kind::kSyntax:
            return "no valid JSON: " + fault.text;
        case Kind::kMissing:
            return fmt::format("\"{}\" is missing", fault.text);
        case Kind::kNotWhole:
            return fmt::format("expected a whole number from {} to {}", fault.low, fault.high);
        case Kind::kOutside:
            return fmt::format("must lie within {} to {}", fault.low, fault.high);
        case Kind::kOther:
            break;
    }
    return fault.text;
}

std::string member_path(const std::string &path, const std::string &name) {
    return path.empty() ? name : path + "." + name;
}

}  // namespace stage
