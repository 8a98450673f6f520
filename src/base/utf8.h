#pragma once

#include <string>
#include <string_view>

namespace tavrin::base {

// Converts UTF-16 to UTF-8. Throws std::runtime_error "WideCharToMultiByte failed" for a lone
// surrogate.
std::string ToUtf8(std::wstring_view text);

}  // namespace tavrin::base
