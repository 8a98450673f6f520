#pragma once

#include <cstdint>
#include <string>

#include <windows.h>

namespace tavrin::test {

// Texts of the window, with the line breaks that its controls show.

inline constexpr wchar_t kEventGoneText[] =
    L"This event is no longer in the log (it may have been overwritten or the log was "
    L"cleared).\r\nPress F5 to refresh.";
inline constexpr wchar_t kNewEventsNotice[] = L"New events available - press F5 to refresh";

// What stands for the message of an event whose provider has none. The data: a line a value.
std::wstring FallbackDescription(std::uint32_t eventId, const std::wstring& provider,
                                 const std::wstring& data);

// What a failed load says of a code that has no text of its own.
std::wstring SystemErrorText(DWORD code);

}  // namespace tavrin::test
