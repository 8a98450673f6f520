#pragma once

#include <windows.h>

namespace tavrin::test {

// Window classes of the system.
inline constexpr wchar_t kDialogClass[] = L"#32770";
inline constexpr wchar_t kPopupMenuClass[] = L"#32768";

// Returns a visible top-level window of a class in a process, or null if there is none.
HWND FindTopWindow(DWORD processId, const wchar_t* className);

// Wait until there is such a window, or none left. Return null or false at the timeout.
HWND WaitForTopWindow(DWORD processId, const wchar_t* className);
bool WaitForNoTopWindow(DWORD processId, const wchar_t* className);

}  // namespace tavrin::test
