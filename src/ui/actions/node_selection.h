#pragma once

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

struct MainWindow;

// TVN_SELCHANGEDW: makes the item's node the current one and shows a channel's events. Throws
// std::out_of_range if the item names no vertex.
void OnNodeSelected(MainWindow& window, const NMTREEVIEWW& change);

}  // namespace tavrin::ui
