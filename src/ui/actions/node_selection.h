#pragma once

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

struct MainWindow;

// TVN_SELCHANGEDW: makes the node of the tree item the current one and shows a channel's
// events. Throws std::out_of_range for an item that names no vertex.
void OnNodeSelected(MainWindow& window, const NMTREEVIEWW& change);

}  // namespace tavrin::ui
