#include "stage/image/frame_pattern.h"

#include <cassert>
#include <charconv>

#include "stage/image/picture.h"

namespace stage {
namespace {

struct Conversion {
    std::size_t length = 0;  // in characters, 0 when the text is no conversion
    int digits = 0;
};

// The conversion %d or %0Nd at the start of `text`.
Conversion conversion_at(std::string_view text) {
    if (text.starts_with("%d")) return {2, 0};
    if (text.size() >= 4 && text.starts_with("%0") && text[2] >= '1' && text[2] <= '9' &&
        text[3] == 'd') {
        return {4, text[2] - '0'};
    }
    return {};
}

}  // namespace

std::optional<FramePattern> FramePattern::parse(const std::filesystem::path &path) {
    const std::string name = path.filename().string();
    FramePattern pattern;
    pattern.folder_ = path.parent_path();
    int numbers = 0;
    bool stray = false;
    for (std::size_t i = 0; i < name.size();) {
        const std::string_view rest = std::string_view(name).substr(i);
        std::string &part = numbers == 0 ? pattern.before_ : pattern.after_;
        if (const Conversion found = conversion_at(rest); found.length != 0) {
            pattern.digits_ = found.digits;
            ++numbers;
            i += found.length;
        } else {
            const bool doubled = rest.starts_with("%%");
            stray = stray || (rest.front() == '%' && !doubled);
            part += rest.front();
            i += doubled ? 2 : 1;
        }
    }
    if (numbers == 0) return std::nullopt;
    if (numbers > 1 || stray) {
        throw PictureError(path.string() +
                           ": the name of a sequence has one frame number, %d or %04d for example");
    }
    return pattern;
}

std::string FramePattern::name_of(int number) const {
    assert(number >= 0);
    std::string digits = std::to_string(number);
    const std::size_t least = static_cast<std::size_t>(digits_);
    if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
    return before_ + digits + after_;
}

std::filesystem::path FramePattern::file(int number) const {
    return folder_ / name_of(number);
}

std::optional<int> FramePattern::number_in(const std::string &name) const {
    if (name.size() <= before_.size() + after_.size()) return std::nullopt;
    const char *begin = name.data() + before_.size();
    const char *end = name.data() + name.size() - after_.size();
    int number = 0;
    const auto result = std::from_chars(begin, end, number);
    // Writing the number again settles what counts as a match: no sign, no missing or extra zero.
    if (result.ec != std::errc() || number < 0 || name_of(number) != name) return std::nullopt;
    return number;
}

std::filesystem::path frame_file(const std::filesystem::path &path, int number) {
    const auto pattern = FramePattern::parse(path);
    return pattern ? pattern->file(number) : path;
}

}  // namespace stage
