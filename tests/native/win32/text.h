#pragma once

#include <string>
#include <string_view>

namespace native {

// Convert between the UTF-16 of Windows and the UTF-8 of the host. Ill-formed input becomes U+FFFD.
std::string ToUtf8(std::wstring_view wide);
std::wstring ToWide(std::string_view utf8);

// Copies a text as Windows functions do. Returns its length, or if `room` is too small, the
// required size including the terminator. Both are in code units.
unsigned ReturnText(std::wstring_view text, wchar_t* buffer, unsigned room);

}  // namespace native
