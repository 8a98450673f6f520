#pragma once

#include <memory>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The one main window; null before WM_CREATE and after WM_DESTROY.
extern std::unique_ptr<MainWindow> g_mainWindow;

// WM_CREATE: makes the window's state and controls, and starts building the channel
// tree. Throws std::system_error when no thread can be started.
void CreateMainWindowState(HWND window, HINSTANCE instance);

// WM_DESTROY: ends every worker, then the state.
void DestroyMainWindowState();

}  // namespace tavrin::ui
