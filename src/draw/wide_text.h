// Text in the system's 8-bit encoding as the UTF-16 that GDI+ takes. No host types. [host thread]
#pragma once

#include <cstdint>
#include <string>

namespace ks::draw {

/// The first `length` bytes of `text` (0 <= length <= size) in `length` UTF-16 units and a
/// terminating zero. On Windows the bytes are in the active ANSI code page; where two bytes make
/// one character, zeros follow the text. Elsewhere they are Latin-1.
std::u16string widen(const std::string &text, std::int16_t length);

}  // namespace ks::draw
