#pragma once

#include <cstdint>
#include <string>

#include <windows.h>

namespace tavrin::test {

// Texts of the window, with the CR LF line breaks that an edit control needs.

inline constexpr wchar_t kEventGoneText[] =
    L"This event is no longer in the log (it may have been overwritten or the log was "
    L"cleared).\r\nPress F5 to refresh.";
inline constexpr wchar_t kNewEventsNotice[] = L"New events available - press F5 to refresh";

// Returns the text shown instead of a missing message. `data` has one line per value.
std::wstring FallbackDescription(std::uint32_t eventId, const std::wstring& provider,
                                 const std::wstring& data);

// Returns the text of an error for which the program has no text: Windows' own text with the code.
std::wstring SystemErrorText(DWORD code);

}  // namespace tavrin::test
