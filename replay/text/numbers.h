#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

// Parses all of `digits`. Returns nothing if they are not a number of this type.
template <typename Number>
std::optional<Number> ParseNumber(std::string_view digits, int base = 10) {
    Number value{};
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc{} || stop != end || digits.empty()) {
        return std::nullopt;
    }
    return value;
}

// Parses decimal digits, or "0x" and hexadecimal digits.
std::optional<std::uint64_t> ParseHexOrDecimal(std::string_view digits);

// Formats a number as "0x" and lower-case hexadecimal digits without leading zeros.
std::string HexText(std::uint64_t number);

}  // namespace replay::text
