#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace replay::text {

// Between UTF-8 and UTF-16. A lone surrogate is kept in both directions (three bytes in UTF-8),
// because logs hold such text and the service hands it on; the conversion of src/base throws.
std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

// Number of UTF-16 units of valid UTF-8.
std::size_t WideLength(std::string_view utf8);

// Writes the UTF-16 form of valid UTF-8, without a terminator; returns the end of what it wrote.
wchar_t* CopyWide(std::string_view utf8, wchar_t* out);

// Offset of the first byte that is not UTF-8, or npos.
std::size_t FindInvalidUtf8(std::string_view bytes);

}  // namespace replay::text
