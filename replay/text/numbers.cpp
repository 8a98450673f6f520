#include "replay/text/numbers.h"

#include <iterator>

namespace replay::text {

std::optional<std::uint64_t> ParseHexOrDecimal(std::string_view digits) {
    if (digits.starts_with("0x") || digits.starts_with("0X")) {
        return ParseNumber<std::uint64_t>(digits.substr(2), 16);
    }
    return ParseNumber<std::uint64_t>(digits);
}

std::string HexText(std::uint64_t number) {
    char digits[16];
    char* const begin = std::begin(digits);
    return "0x" + std::string(begin, std::to_chars(begin, std::end(digits), number, 16).ptr);
}

}  // namespace replay::text
