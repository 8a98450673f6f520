#pragma once

#include <string>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// Sets up the bar's parts and shows the computer's name. Once.
void SetUpStatusBar(MainWindow& window, HWND statusBar);

// Shows a one-line message. An empty one clears the line.
void SetStatusMessage(const MainWindow& window, const std::wstring& message);

}  // namespace tavrin::ui
