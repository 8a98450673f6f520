#pragma once

#include <windows.h>

namespace tavrin::ui {

// Makes a control hand the commands of accelerators on to the main window. The message
// loop translates each key for the control that has the focus, and most controls
// swallow the command.
void ForwardAcceleratorCommands(HWND control);

}  // namespace tavrin::ui
