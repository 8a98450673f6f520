#pragma once

#include <memory>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The one main window; null before WM_CREATE and after WM_DESTROY.
extern std::unique_ptr<MainWindow> g_mainWindow;

// WM_CREATE: makes the window's state and controls, and starts building the channel tree. A
// tree that cannot be built leaves a message in the status bar. Throws std::bad_alloc.
void CreateMainWindowState(HWND window, HINSTANCE instance);

// WM_DESTROY: ends every worker, then the state.
void DestroyMainWindowState();

}  // namespace tavrin::ui
