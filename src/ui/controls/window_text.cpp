#include "ui/controls/window_text.h"

#include <iterator>

namespace tavrin::ui {

std::wstring ReadEditText(HWND edit) {
    wchar_t text[256];
    const int length = GetWindowTextW(edit, text, static_cast<int>(std::size(text)));
    return std::wstring(text, static_cast<std::size_t>(length));
}

}  // namespace tavrin::ui
