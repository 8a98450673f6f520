#pragma once

#include <string>
#include <string_view>

namespace tavrin::base {

// Throws std::runtime_error "WideCharToMultiByte failed" for a lone surrogate.
std::string ToUtf8(std::wstring_view text);

}  // namespace tavrin::base
