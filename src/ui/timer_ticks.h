#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_TIMER: runs what the timer with this identifier is for.
void OnTimer(MainWindow& window, UINT_PTR id);

}  // namespace tavrin::ui
