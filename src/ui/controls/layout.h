#pragma once

#include "ui/rules/pane_layout.h"

namespace tavrin::ui {

struct MainWindow;

// The window's client area, with the heights of its bars.
Area ClientArea(const MainWindow& window);

// WM_SIZE: fits the panes into a client area of this size and places every control.
void LayOut(MainWindow& window, int width, int height);

}  // namespace tavrin::ui
