// On which lines of a JSON text its values stand.
#pragma once

#include <map>
#include <string>

namespace stage {

/// Values go by their path: "" is the whole text, then "steps[3].drag.to".
class LineIndex {
  public:
    /// Deeper nesting than any file needs; a limit keeps paths short.
    static constexpr std::size_t kMaxDepth = 64;

    /// `text` must be valid JSON. Throws JsonError when an object has a member twice (of which
    /// a parser would drop one), or values are nested too deeply.
    explicit LineIndex(const std::string &text);

    /// Line of the value at `path`, 1-based; for a path that is not there, that of the innermost
    /// value around it which is.
    int line_of(std::string path) const;

  private:
    std::map<std::string, int> lines_;
};

}  // namespace stage
