// Text from the engine, which writes characters beyond U+FFFF as two three-byte surrogates.
#pragma once

#include <string>
#include <string_view>

namespace stage {

/// Proper UTF-8: joins surrogate pairs; single surrogates become U+FFFD.
std::string utf8_from_engine(std::string_view text);

}  // namespace stage
