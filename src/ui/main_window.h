#pragma once

#include <windows.h>

namespace tavrin::ui {

// Decodes messages and calls what handles them. Traces every exception; its message fails.
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tavrin::ui
