#pragma once

#include <windows.h>

namespace tavrin::ui {

// Makes a control pass accelerator commands on to the main window. The message loop translates keys
// for the focused control, and most controls swallow WM_COMMAND.
void ForwardAcceleratorCommands(HWND control);

// Does the same for a control's child windows: under Wine a date picker's check box is one and
// takes the focus. Not for lists: each paint sends the header hundreds of messages, and every one
// would take the detour.
void ForwardAcceleratorCommandsOfParts(HWND control);

}  // namespace tavrin::ui
