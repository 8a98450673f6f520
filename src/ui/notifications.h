#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_NOTIFY: calls the handler of the control that sent it.
LRESULT OnNotify(MainWindow& window, NMHDR& notification);

}  // namespace tavrin::ui
