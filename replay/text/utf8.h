#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace replay::text {

// Convert between UTF-8 and UTF-16. A lone surrogate is preserved in both directions, as three
// bytes in UTF-8, because logs contain such text and Windows returns it. The conversion in src/base
// throws instead.
std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

// Length of valid UTF-8 in UTF-16 code units.
std::size_t WideLength(std::string_view utf8);

// Converts valid UTF-8 to UTF-16 without a terminator. Returns the end of the output.
wchar_t* CopyWide(std::string_view utf8, wchar_t* out);

// Returns the offset of the first byte that is not valid UTF-8, or npos.
std::size_t FindInvalidUtf8(std::string_view bytes);

}  // namespace replay::text
