#pragma once

#include <memory>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The one main window; null before WM_CREATE and after WM_DESTROY.
extern std::unique_ptr<MainWindow> g_mainWindow;

// WM_CREATE: creates the window's state and controls and starts the tree builder. If it cannot be
// started, the status bar says why. Throws std::bad_alloc.
void CreateMainWindowState(HWND window, HINSTANCE instance);

// WM_DESTROY: ends every worker, then destroys the state.
void DestroyMainWindowState();

}  // namespace tavrin::ui
