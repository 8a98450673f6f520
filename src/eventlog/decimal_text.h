#pragma once

#include <cstdint>
#include <iterator>
#include <string>

namespace tavrin::eventlog {

// Appends a number in plain decimal, with leading zeros up to the given width. Made
// for every record and every visible cell, so without the cost of printf.
inline void AppendDecimal(std::wstring& text, std::uint64_t number, int width = 1) {
    wchar_t digits[20];
    wchar_t* const end = std::end(digits);
    wchar_t* first = end;
    do {
        *--first = static_cast<wchar_t>(L'0' + number % 10);
        number /= 10;
    } while (number != 0 || end - first < width);
    text.append(first, end);
}

inline std::wstring DecimalText(std::uint64_t number) {
    std::wstring text;
    AppendDecimal(text, number);
    return text;
}

}  // namespace tavrin::eventlog
