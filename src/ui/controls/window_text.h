#pragma once

#include <string>

#include <windows.h>

namespace tavrin::ui {

// The text of an edit that holds a filter or a search: at most 255 characters.
std::wstring ReadEditText(HWND edit);

}  // namespace tavrin::ui
