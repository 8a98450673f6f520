#pragma once

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace tavrin::test {

// The text of a part of a status bar in another process.
std::wstring StatusText(HANDLE process, HWND statusBar, int part);

// The right edges of the parts in client coordinates. -1 means the right edge of the status bar.
std::vector<int> StatusEdges(HANDLE process, HWND statusBar);

// The time of a date picker in another process, or nullopt if it is unticked.
std::optional<SYSTEMTIME> PickerTime(HANDLE process, HWND picker);

// The titles of a tab control in another process.
std::vector<std::wstring> TabTitles(HANDLE process, HWND tab);

// The display area of a tab control, in its client coordinates.
RECT TabDisplayRect(HANDLE process, HWND tab);

}  // namespace tavrin::test
