#include "window/expected/expected_texts.h"

namespace tavrin::test {

std::wstring FallbackDescription(std::uint32_t eventId, const std::wstring& provider,
                                 const std::wstring& data) {
    return L"The description for Event ID " + std::to_wstring(eventId) + L" from source " +
           provider +
           L" cannot be found. Either the component that raises this event is not installed on "
           L"your local computer or the installation is corrupted.You can install or repair the "
           L"component on the local computer.\r\n\r\nIf the event originated on another "
           L"computer, the display information had to be saved with the event.\r\n\r\nThe "
           L"following information was included with the event:\r\n\r\n" +
           data +
           L"\r\n\r\nThe message resource is present but the message was not found in the "
           L"message table\r\n";
}

std::wstring SystemErrorText(DWORD code) {
    wchar_t text[512] = L"";
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                   text, 512, nullptr);
    // System texts end with blanks and line breaks.
    std::wstring trimmed = text;
    trimmed.erase(trimmed.find_last_not_of(L"\r\n ") + 1);
    return (trimmed.empty() ? L"Unknown error." : trimmed) + L" (error " + std::to_wstring(code) +
           L")";
}

}  // namespace tavrin::test
