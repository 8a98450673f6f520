#pragma once

#include <string_view>

namespace replay::text {

constexpr std::string_view kBlanks = " \t\r\n";

// Removes leading and trailing blanks.
constexpr std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace replay::text
