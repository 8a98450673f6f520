#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_COMMAND: runs the command. Returns false for an unknown one.
bool OnCommand(MainWindow& window, WORD id, WORD notification);

// WM_CONTEXTMENU: shows the event list's menu at a screen point.
void ShowListContextMenu(const MainWindow& window, POINT point);

}  // namespace tavrin::ui
