#pragma once

#include <string>

#include <windows.h>

namespace tavrin::ui {

// The text of a filter or search edit: at most 255 characters.
std::wstring ReadEditText(HWND edit);

}  // namespace tavrin::ui
