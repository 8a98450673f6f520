#pragma once

#include <windows.h>

namespace tavrin::ui {

// Suspends a control's painting while it lives, so that many changes appear as one.
class RedrawOff {
public:
    explicit RedrawOff(HWND control) : control_(control) {
        SendMessageW(control_, WM_SETREDRAW, FALSE, 0);
    }
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;
    ~RedrawOff() {
        SendMessageW(control_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(control_, nullptr, TRUE);
    }

private:
    HWND control_;
};

}  // namespace tavrin::ui
