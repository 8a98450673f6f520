#pragma once

#include <string_view>

#include <windows.h>

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::ui {

struct MainWindow;

// Gives the tab its one label. Once.
void SetUpDetailsTab(MainWindow& window, HWND tab);

// Shows a text, whatever its line breaks, at once.
void SetDetailsText(const MainWindow& window, std::wstring_view text);

// Shows the full text of an event of the current node; empty when the service gives
// none. Waits for the service.
void ShowEvent(const MainWindow& window, const eventlog::EventRecord& record);

}  // namespace tavrin::ui
