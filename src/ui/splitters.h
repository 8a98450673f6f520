#pragma once

#include <windows.h>

#include "ui/pane_layout.h"

namespace tavrin::ui {

struct MainWindow;

// The strips between the panes, in the order in which a point is tried.
enum class Splitter { None, Left, Right, Bottom };

// The splitter at a point of the client area; both edges of a strip belong to it.
Splitter HitSplitter(POINT point, const PaneSizes& panes, const Area& area);

// The pane sizes when a splitter is dragged to a point.
PaneSizes DragSplitter(Splitter splitter, POINT point, PaneSizes panes, const Area& area);

// WM_SETCURSOR: shows the cursor for what lies under the mouse. False where the
// system is to choose.
bool OnSetCursor(const MainWindow& window);

// The mouse over the main window, in client coordinates; negative while captured.
void OnLeftButtonDown(MainWindow& window, POINT point);
void OnMouseMove(MainWindow& window, POINT point);
void OnLeftButtonUp(MainWindow& window);

}  // namespace tavrin::ui
