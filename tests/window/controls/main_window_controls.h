#pragma once

#include <string>

#include <windows.h>

namespace tavrin::test {

// The child windows of a main window in another process.
struct MainWindowControls {
    HWND toolbar = nullptr;
    HWND filterEdit = nullptr;
    HWND fromLabel = nullptr;
    HWND fromPicker = nullptr;
    HWND toLabel = nullptr;
    HWND toPicker = nullptr;
    HWND statusBar = nullptr;
    HWND tree = nullptr;
    HWND spareStatic = nullptr;
    HWND sourcesFrame = nullptr;
    HWND detailsFrame = nullptr;
    HWND tab = nullptr;
    HWND tabPage = nullptr;
    HWND detailsEdit = nullptr;
    HWND list = nullptr;
    HWND listHeader = nullptr;
    HWND headerPane = nullptr;
    HWND loadedCaption = nullptr;
    HWND totalCaption = nullptr;
    HWND loadedValue = nullptr;
    HWND totalValue = nullptr;
    HWND nodeName = nullptr;
    HWND sourcesCaption = nullptr;
    HWND sourcesSearch = nullptr;
    HWND sourcesList = nullptr;
    HWND showAllSources = nullptr;
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
