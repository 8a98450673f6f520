#include "ui/controls/status_bar.h"

#include <iterator>

#include <commctrl.h>

#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

constexpr int kComputerNamePart = 0;
constexpr int kMessagePart = 1;
constexpr int kComputerNameWidth = 100;  // pixels
constexpr int kToRightEdge = -1;

std::wstring ComputerName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD length = static_cast<DWORD>(std::size(name));
    return GetComputerNameW(name, &length) ? std::wstring(name, length) : std::wstring(L"-");
}

void SetPartText(HWND statusBar, int part, const std::wstring& text) {
    SendMessageW(statusBar, SB_SETTEXTW, static_cast<WPARAM>(part),
                 reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace

void SetUpStatusBar(MainWindow&, HWND statusBar) {
    const int rightEdges[] = {kComputerNameWidth, kToRightEdge};
    SendMessageW(statusBar, SB_SETPARTS, std::size(rightEdges),
                 reinterpret_cast<LPARAM>(rightEdges));
    SetPartText(statusBar, kComputerNamePart, ComputerName());
}

void SetStatusMessage(const MainWindow& window, const std::wstring& message) {
    SetPartText(window.controls.statusBar, kMessagePart, message);
}

}  // namespace tavrin::ui
