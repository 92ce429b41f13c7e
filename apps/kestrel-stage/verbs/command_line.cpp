#include "kestrel-stage/verbs/command_line.h"

#ifdef _WIN32
#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include <string_view>

#include "stage/text/utf16.h"
#endif

namespace stage_cli {

#ifdef _WIN32
std::vector<std::string> command_line_words(int, char **) {
    int count = 0;
    LPWSTR *wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) {
        const std::wstring_view word(wide[i]);
        words.push_back(stage::utf8_from_utf16(std::u16string(word.begin(), word.end())));
    }
    LocalFree(wide);
    return words;
}
#else
std::vector<std::string> command_line_words(int argc, char **argv) {
    return {argv + 1, argv + argc};
}
#endif

}  // namespace stage_cli
