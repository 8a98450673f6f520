#include "ui/rules/line_breaks.h"

namespace tavrin::ui {

std::wstring WithLineBreakPairs(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    wchar_t previous = L'\0';
    for (const wchar_t unit : text) {
        const bool closesPair = unit == L'\n' && previous == L'\r';
        if (unit == L'\r' || (unit == L'\n' && !closesPair)) {
            result += L"\r\n";
        } else if (!closesPair) {
            result += unit;
        }
        previous = unit;
    }
    return result;
}

}  // namespace tavrin::ui
