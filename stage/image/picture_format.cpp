#include "stage/image/picture_format.h"

#include <algorithm>
#include <vector>

namespace stage {

std::string extension_of(const std::filesystem::path &path) {
    std::string extension = path.extension().string();
    if (!extension.empty()) extension.erase(0, 1);
    // Only ASCII letters occur in the tables, and the locale has no say.
    std::ranges::transform(extension, extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return extension;
}

const PictureFormat *find_format(std::span<const PictureFormat> formats,
                                 std::string_view extension) {
    const auto row = std::ranges::find(formats, extension, &PictureFormat::extension);
    return row == formats.end() ? nullptr : &*row;
}

std::string list_extensions(std::span<const PictureFormat> formats,
                            std::span<const PictureFormat> more) {
    std::vector<std::string_view> names;
    for (const auto &row : formats) names.push_back(row.extension);
    for (const auto &row : more) names.push_back(row.extension);
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i != 0) list += i + 1 == names.size() ? " and " : ", ";
        list += names[i];
    }
    return list;
}

}  // namespace stage
