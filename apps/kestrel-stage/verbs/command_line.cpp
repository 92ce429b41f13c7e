#include "kestrel-stage/verbs/command_line.h"

#ifdef _WIN32
#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>
#endif

namespace stage_cli {

#ifdef _WIN32
namespace {

std::string to_utf8(const wchar_t *text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return {};
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back();
    return result;
}

}  // namespace

std::vector<std::string> command_line_words(int, char **) {
    int count = 0;
    LPWSTR *wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) words.push_back(to_utf8(wide[i]));
    LocalFree(wide);
    return words;
}
#else
std::vector<std::string> command_line_words(int argc, char **argv) {
    return {argv + 1, argv + argc};
}
#endif

}  // namespace stage_cli
