#include "eventlog/details/event_data_text.h"

namespace tavrin::eventlog {
namespace {

constexpr std::wstring_view kOpenData = L"<Data";
constexpr std::wstring_view kCloseData = L"</Data>";

// The event as XML; empty if the service cannot render it.
std::wstring RenderXml(EVT_HANDLE event) {
    DWORD bytes = 0;
    DWORD count = 0;
    if (!EvtRender(nullptr, event, EvtRenderEventXml, 0, nullptr, &bytes, &count) &&
        GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
        return {};
    }
    std::wstring xml(bytes / sizeof(wchar_t), L'\0');
    if (!EvtRender(nullptr, event, EvtRenderEventXml,
                   static_cast<DWORD>(xml.size() * sizeof(wchar_t)), xml.data(), &bytes, &count)) {
        return {};
    }
    xml.resize(xml.find(L'\0') == std::wstring::npos ? xml.size() : xml.find(L'\0'));
    return xml;
}

std::wstring_view WithoutTrailingBreaks(std::wstring_view value) {
    const std::size_t last = value.find_last_not_of(L"\r\n");
    return value.substr(0, last == std::wstring_view::npos ? 0 : last + 1);
}

}  // namespace

std::wstring FormatEventData(EVT_HANDLE event) {
    const std::wstring xml = RenderXml(event);
    return FormatDataValues(ExtractElementSection(xml, L"EventData")) +
           FormatDataValues(ExtractElementSection(xml, L"UserData"));
}

std::wstring_view ExtractElementSection(std::wstring_view xml, std::wstring_view name) {
    const std::size_t begin = xml.find(std::wstring(L"<").append(name).append(L">"));
    if (begin == std::wstring_view::npos) {
        return {};
    }
    const std::size_t end = xml.find(std::wstring(L"</").append(name).append(L">"), begin);
    return end == std::wstring_view::npos ? std::wstring_view() : xml.substr(begin, end - begin);
}

std::wstring FormatDataValues(std::wstring_view section) {
    std::wstring text;
    std::size_t position = 0;
    for (;;) {
        const std::size_t open = section.find(kOpenData, position);
        // The first ">" ends the open tag. The value of a self-closed element therefore runs into
        // the next element.
        const std::size_t tagEnd = section.find(L'>', open);
        const std::size_t close = section.find(kCloseData, tagEnd);
        // Each search starts at the last result, so a missing part ends the text.
        if (close == std::wstring_view::npos) {
            return text;
        }
        const std::wstring_view value =
            WithoutTrailingBreaks(section.substr(tagEnd + 1, close - tagEnd - 1));
        if (!value.empty()) {
            text.append(value).append(L"\n");
        }
        position = close + kCloseData.size();
    }
}

}  // namespace tavrin::eventlog
