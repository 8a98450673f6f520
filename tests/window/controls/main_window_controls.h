#pragma once

#include <string>

#include <windows.h>

#include "ui/controls/control_handles.h"

namespace tavrin::test {

// The child windows of a main window in another process.
struct MainWindowControls : ui::Controls {
    HWND listHeader = nullptr;
};

// A control that is not found stays null.
MainWindowControls FindControls(HWND mainWindow);

// Asks the window with WM_GETTEXT: across processes, GetWindowText does not read the text of a
// control.
std::wstring TextOf(HWND window);

std::wstring ClassOf(HWND window);

// A window's rectangle in the client coordinates of another window, usually its parent.
RECT RectIn(HWND reference, HWND window);

SIZE ClientSize(HWND window);

}  // namespace tavrin::test
