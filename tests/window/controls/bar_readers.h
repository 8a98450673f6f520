#pragma once

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace tavrin::test {

// The text of a part of a status bar in another process.
std::wstring StatusText(HANDLE process, HWND statusBar, int part);

// The right edges of its parts; -1 for the last one that reaches to the end.
std::vector<int> StatusEdges(HANDLE process, HWND statusBar);

// The time of a date picker in another process; nothing when it is not ticked.
std::optional<SYSTEMTIME> PickerTime(HANDLE process, HWND picker);

// The titles of a tab control in another process.
std::vector<std::wstring> TabTitles(HANDLE process, HWND tab);

// The part of a tab control that its page fills, in its client coordinates.
RECT TabDisplayRect(HANDLE process, HWND tab);

}  // namespace tavrin::test
