#pragma once

#include <string>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// Gives the bar its parts and shows the computer's name. Once.
void SetUpStatusBar(MainWindow& window, HWND statusBar);

// The one-line message; an empty one takes the last away.
void SetStatusMessage(const MainWindow& window, const std::wstring& message);

// Timer 3: tells the user of events that the shown channel's last load did not read.
void ShowNewEventsNotice(const MainWindow& window);

}  // namespace tavrin::ui
