#include "replay/text/channel_name.h"

#include <windows.h>

namespace replay::text {

std::wstring FoldCase(std::wstring_view name) {
    std::wstring folded(name);
    CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

std::wstring ChannelFileStem(std::wstring_view name) {
    std::wstring stem;
    for (const wchar_t unit : name) {
        if (unit == L'/') {
            stem += L"%4";
        } else {
            stem += unit;
        }
    }
    return stem;
}

}  // namespace replay::text
