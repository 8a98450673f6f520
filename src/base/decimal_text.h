#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

namespace tavrin::base {

// Writes a number in decimal with leading zeros up to the width. Returns the end. Needs room for
// max(width, 20) digits.
inline wchar_t* WriteDecimal(wchar_t* text, std::uint64_t number, int width = 1) {
    int length = 1;
    for (std::uint64_t rest = number / 10; rest != 0; rest /= 10) {
        ++length;
    }
    wchar_t* const end = text + std::max(length, width);
    for (wchar_t* place = end; place != text; number /= 10) {
        *--place = static_cast<wchar_t>(L'0' + number % 10);
    }
    return end;
}

// Appends a number in decimal with leading zeros up to the width. Avoids printf, which is too slow
// for every record and visible cell.
inline void AppendDecimal(std::wstring& text, std::uint64_t number, int width = 1) {
    wchar_t digits[20];
    text.append(digits, WriteDecimal(digits, number, width));
}

inline std::wstring DecimalText(std::uint64_t number) {
    std::wstring text;
    AppendDecimal(text, number);
    return text;
}

}  // namespace tavrin::base
