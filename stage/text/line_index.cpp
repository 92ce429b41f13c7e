#include "stage/text/line_index.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

#include "stage/text/json_error.h"

namespace stage {
namespace {

/// Walks over the text once. Everything that a parser has accepted may be taken for granted.
class Walk {
  public:
    Walk(const std::string &text, std::map<std::string, int> &lines) : text_(text), lines_(lines) {}

    void run() {
        while (at_ < text_.size()) step();
    }

  private:
    /// An object or list whose end has not been reached.
    struct Level {
        std::string path;
        bool list = false;
        bool wants_key = false;
        std::size_t next = 0;  ///< list: number of the next value
        std::string key;       ///< object: of the next value
        std::set<std::string> keys;
    };

    void step() {
        switch (const char c = text_[at_]) {
            case '\n':
                ++line_;
                [[fallthrough]];
            case ' ':
            case '\t':
            case '\r':
            case ':':
                ++at_;
                return;
            case ',':
                levels_.back().wants_key = !levels_.back().list;
                ++at_;
                return;
            case '{':
            case '[':
                open(c == '[');
                return;
            case '}':
            case ']':
                levels_.pop_back();
                ++at_;
                return;
            default:
                scalar();
        }
    }

    void open(bool list) {
        const std::string path = take_value();
        if (levels_.size() >= LineIndex::kMaxDepth) refuse(path, "values are nested too deeply");
        levels_.push_back({path, list, !list, 0, "", {}});
        ++at_;
    }

    void scalar() {
        const bool is_key = text_[at_] == '"' && !levels_.empty() && levels_.back().wants_key;
        const std::size_t begin = at_;
        skip_scalar();
        if (!is_key) {
            take_value();
            return;
        }
        Level &level = levels_.back();
        level.wants_key = false;
        level.key = nlohmann::json::parse(text_.substr(begin, at_ - begin)).get<std::string>();
        if (!level.keys.insert(level.key).second) {
            refuse(path_of_next(), "is given twice");
        }
    }

    void skip_scalar() {
        if (text_[at_] != '"') {
            at_ = std::min(text_.find_first_of(" \t\r\n,]}", at_), text_.size());
            return;
        }
        ++at_;
        while (text_[at_] != '"') at_ += text_[at_] == '\\' ? 2 : 1;
        ++at_;
    }

    std::string path_of_next() const {
        if (levels_.empty()) return "";
        const Level &level = levels_.back();
        if (level.list) return level.path + "[" + std::to_string(level.next) + "]";
        return member_path(level.path, level.key);
    }

    /// Notes that a value begins here.
    std::string take_value() {
        const std::string path = path_of_next();
        if (!levels_.empty()) ++levels_.back().next;
        lines_.emplace(path, line_);
        return path;
    }

    [[noreturn]] void refuse(const std::string &path, const char *reason) const {
        throw JsonError({.path = path, .line = line_, .text = reason});
    }

    const std::string &text_;
    std::map<std::string, int> &lines_;
    std::size_t at_ = 0;
    int line_ = 1;
    std::vector<Level> levels_;
};

}  // namespace

LineIndex::LineIndex(const std::string &text) {
    Walk(text, lines_).run();
}

int LineIndex::line_of(std::string path) const {
    while (true) {
        const auto found = lines_.find(path);
        if (found != lines_.end()) return found->second;
        const std::size_t end = path.find_last_of(".[");
        if (path.empty()) return 1;
        path.resize(end == std::string::npos ? 0 : end);
    }
}

}  // namespace stage
