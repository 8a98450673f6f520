#pragma once

#include <string>
#include <string_view>

namespace tavrin::test {

// UTF-16 to UTF-8. A lone surrogate is written as the three bytes that its number gives, which
// no reader may take for a character.
std::string ToUtf8(std::wstring_view text);

// UTF-8 to UTF-16; what is no UTF-8 becomes U+FFFD.
std::wstring FromUtf8(std::string_view bytes);

}  // namespace tavrin::test
