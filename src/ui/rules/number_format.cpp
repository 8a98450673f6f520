#include "ui/rules/number_format.h"

#include <windows.h>

#include "base/decimal_text.h"

namespace tavrin::ui {
namespace {

constexpr int kSeparatorCapacity = 8;
constexpr int kFormattedCapacity = 64;
constexpr UINT kGroupsOfThree = 3;

// Empty if the locale cannot be read.
struct Separators {
    wchar_t decimal[kSeparatorCapacity]{};
    wchar_t thousands[kSeparatorCapacity]{};

    Separators() {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, decimal, kSeparatorCapacity);
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, thousands, kSeparatorCapacity);
    }
};

}  // namespace

std::wstring FormatCount(std::uint64_t count) {
    const std::wstring digits = base::DecimalText(count);
    Separators separators;
    NUMBERFMTW format{};
    format.Grouping = kGroupsOfThree;
    format.lpDecimalSep = separators.decimal;
    format.lpThousandSep = separators.thousands;
    wchar_t formatted[kFormattedCapacity] = {};
    const int length = GetNumberFormatW(LOCALE_USER_DEFAULT, 0, digits.c_str(), &format, formatted,
                                        kFormattedCapacity);
    // Without a leading zero, the system formats 0 as an empty text.
    return length > 0 && formatted[0] != L'\0' ? formatted : digits;
}

}  // namespace tavrin::ui
