#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include "ui/controls/window_state.h"
#include "ui/create_controls.h"

namespace tavrin::ui {

// A main window's state with every control, in a hidden window.
class WindowWithControls : public testing::Test {
protected:
    WindowWithControls()
        : state_(CreateWindowExW(0, L"Static", L"", WS_OVERLAPPEDWINDOW, 0, 0, 900, 600, nullptr,
                                 nullptr, nullptr, nullptr)) {
        CreateControls(state_, GetModuleHandleW(nullptr));
    }
    ~WindowWithControls() override { DestroyWindow(state_.handle); }

    MainWindow state_;
};

}  // namespace tavrin::ui
