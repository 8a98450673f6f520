#pragma once

#include <string>
#include <string_view>

namespace tavrin::query {

// The text for use in an attribute or element of XML. A leaf of its own that the
// folders below may use.
inline std::wstring XmlEscape(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size());
    for (const wchar_t unit : text) {
        switch (unit) {
            case L'&': escaped += L"&amp;"; break;
            case L'<': escaped += L"&lt;"; break;
            case L'>': escaped += L"&gt;"; break;
            case L'\'': escaped += L"&apos;"; break;
            case L'"': escaped += L"&quot;"; break;
            default: escaped += unit;
        }
    }
    return escaped;
}

}  // namespace tavrin::query
