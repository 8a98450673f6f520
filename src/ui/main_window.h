#pragma once

#include <windows.h>

namespace tavrin::ui {

// Only decodes messages. No exception leaves it: each is traced, and its message has failed.
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tavrin::ui
