#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay {

// Between UTF-8 and UTF-16. A lone surrogate is kept in both directions (three bytes in UTF-8),
// because logs hold such text and the service hands it on.
std::wstring ToWide(std::string_view utf8);
std::string ToUtf8(std::wstring_view wide);

// Number of UTF-16 units of valid UTF-8.
std::size_t WideLength(std::string_view utf8);

// Writes the UTF-16 form of valid UTF-8, without a terminator; returns the end of what it wrote.
wchar_t* CopyWide(std::string_view utf8, wchar_t* out);

// Offset of the first byte that is not UTF-8, or npos.
std::size_t FindInvalidUtf8(std::string_view bytes);

// Channel names are compared without regard to case.
std::wstring FoldCase(std::wstring_view text);

// The whole of `digits` as a number of the type, or nothing.
template <typename Number>
std::optional<Number> ParseNumber(std::string_view digits, int base = 10) {
    Number value{};
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc{} || stop != end || digits.empty())
        return std::nullopt;
    return value;
}

// "0x" and hexadecimal digits, or decimal digits.
std::optional<std::uint64_t> ParseHexOrDecimal(std::string_view digits);

// Blanks, tabs and line ends at both ends cut off.
std::string_view Trim(std::string_view text);

}  // namespace replay
