#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

// The whole of `digits` as a number of the type, or nothing.
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

// "0x" and hexadecimal digits, or decimal digits.
std::optional<std::uint64_t> ParseHexOrDecimal(std::string_view digits);

// "0x" and the fewest lower-case hexadecimal digits.
std::string HexText(std::uint64_t number);

}  // namespace replay::text
