#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// Creates and sets up every control of the window. Once, on WM_CREATE.
void CreateControls(MainWindow& window, HINSTANCE instance);

}  // namespace tavrin::ui
