#pragma once

#include <string_view>

#include <windows.h>

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::ui {

struct MainWindow;

// Adds the one tab. Once.
void SetUpDetailsTab(MainWindow& window, HWND tab);

// Shows a text at once. Line breaks can be CR, LF or CR LF.
void SetDetailsText(const MainWindow& window, std::wstring_view text);

// Shows the full text of an event of the shown channel, or no text if the service gives none. Waits
// for the service.
void ShowEvent(const MainWindow& window, const eventlog::EventRecord& record);

}  // namespace tavrin::ui
