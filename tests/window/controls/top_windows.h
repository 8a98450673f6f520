#pragma once

#include <windows.h>

namespace tavrin::test {

// The classes of the system's own windows.
inline constexpr wchar_t kDialogClass[] = L"#32770";
inline constexpr wchar_t kPopupMenuClass[] = L"#32768";

// A visible top-level window of a class in a process; null when there is none.
HWND FindTopWindow(DWORD processId, const wchar_t* className);

// The same, waiting until there is one, or none any more.
HWND WaitForTopWindow(DWORD processId, const wchar_t* className);
bool WaitForNoTopWindow(DWORD processId, const wchar_t* className);

}  // namespace tavrin::test
