#pragma once

#include <windows.h>

namespace tavrin::ui {

// Shows the About box over the main window until it is closed.
void ShowAboutBox(HWND owner);

}  // namespace tavrin::ui
