#include "draw/wide_text.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace ks::draw {

std::u16string widen(const std::string &text, std::int16_t length) {
    std::u16string wide(static_cast<std::size_t>(length), u'\0');
#ifdef _WIN32
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    // The terminating zero, which a string has behind its last unit anyway, is converted too.
    MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, text.c_str(), length + 1,
                        reinterpret_cast<wchar_t *>(wide.data()), length + 1);
    wide.data()[length] = u'\0';
#else
    for (std::size_t i = 0; i < wide.size(); ++i) wide[i] = static_cast<unsigned char>(text[i]);
#endif
    return wide;
}

}  // namespace ks::draw
