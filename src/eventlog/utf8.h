#pragma once

#include <string>
#include <string_view>

namespace tavrin::eventlog {

// Throws std::runtime_error "WideCharToMultiByte failed" for a lone surrogate.
std::string ToUtf8(std::wstring_view text);

}  // namespace tavrin::eventlog
