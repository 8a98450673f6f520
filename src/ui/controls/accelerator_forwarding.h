#pragma once

#include <windows.h>

namespace tavrin::ui {

// Makes a control hand the commands of accelerators on to the main window. The message
// loop translates each key for the control that has the focus, and most controls
// swallow the command.
void ForwardAcceleratorCommands(HWND control);

// The same for the windows that a control is made of: some systems make a date picker's
// check box one, which takes the focus. Not for lists: each paint of one sends its
// header hundreds of messages, and every one would pay for the detour.
void ForwardAcceleratorCommandsOfParts(HWND control);

}  // namespace tavrin::ui
