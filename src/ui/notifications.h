#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// WM_NOTIFY: hands it to the part of the window whose control sent it.
LRESULT OnNotify(MainWindow& window, NMHDR& notification);

}  // namespace tavrin::ui
