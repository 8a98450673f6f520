#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_TIMER: runs the action of the timer with this identifier.
void OnTimer(MainWindow& window, UINT_PTR id);

}  // namespace tavrin::ui
