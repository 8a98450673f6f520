#pragma once

#include <string>
#include <string_view>

namespace native {

// Between the UTF-16 of Windows and the UTF-8 of the host. What is not well-formed becomes U+FFFD.
std::string ToUtf8(std::wstring_view wide);
std::wstring ToWide(std::string_view utf8);

// Hands a text back as Windows does: returns its length, or the room that it needs with its
// terminator.
unsigned ReturnText(std::wstring_view text, wchar_t* buffer, unsigned room);

}  // namespace native
