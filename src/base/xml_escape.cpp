#include "base/xml_escape.h"

namespace tavrin::base {

std::wstring XmlEscape(std::wstring_view text) {
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

}  // namespace tavrin::base
