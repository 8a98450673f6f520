#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_SETCURSOR: shows the cursor for what lies under the mouse. Returns false where the system
// chooses.
bool OnSetCursor(const MainWindow& window);

// Mouse messages of the main window, in client coordinates. They can be negative while captured.
void OnLeftButtonDown(MainWindow& window, POINT point);
void OnMouseMove(MainWindow& window, POINT point);
void OnLeftButtonUp(MainWindow& window);

// WM_CAPTURECHANGED: another window took the mouse, for example a dialog. The drag is over.
void OnCaptureLost(MainWindow& window);

}  // namespace tavrin::ui
