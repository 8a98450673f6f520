#include "ui/main_window.h"

#include <exception>
#include <string>

#include <windowsx.h>

#include "diag/debug_trace.h"
#include "eventlog/loading/worker_messages.h"
#include "ui/commands.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/layout.h"
#include "ui/controls/splitters.h"
#include "ui/controls/tree_view.h"
#include "ui/controls/window_state.h"
#include "ui/notifications.h"
#include "ui/timer_ticks.h"
#include "ui/window_lifetime.h"

namespace tavrin::ui {
namespace {

constexpr LONG kMinTrackWidth = 300;

void OnPaint(HWND window) {
    PAINTSTRUCT paint{};
    BeginPaint(window, &paint);
    EndPaint(window, &paint);
}

// A minimised window has no client area; a layout would shrink the user's panes.
void OnSize(MainWindow& window, WPARAM kind, int width, int height) {
    if (kind != SIZE_MINIMIZED) {
        LayOut(window, width, height);
    }
}

// The node may be gone, so its address is only compared.
void OnRecordCountReady(MainWindow& window, std::uint64_t count, const eventlog::EventNode* node) {
    window.recordCounts[node] = count;
    diag::DebugTrace(L"Got Node Record Count completion from Event Log API Wrapper: " +
                     std::to_wstring(count));
    if (node == window.currentNode.get()) {
        SetTotalCount(window, count);
    }
}

void OnDestroy() {
    if (g_mainWindow) {
        DestroyMainWindowState();
    }
    PostQuitMessage(0);
}

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

// Returns false for a menu of another control.
bool OnContextMenu(MainWindow& window, HWND control, POINT point) {
    if (control != window.controls.list) {
        return false;
    }
    ShowListContextMenu(window, point);
    return true;
}

// Messages that need no state.
bool DispatchWithoutState(HWND handle, UINT message, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            CreateMainWindowState(handle, reinterpret_cast<CREATESTRUCTW*>(lParam)->hInstance);
            return true;
        case WM_DESTROY: OnDestroy(); return true;
        case WM_PAINT: OnPaint(handle); return true;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize.x = kMinTrackWidth;
            return true;
        default: return false;
    }
}

// Messages that need the state. Returns false if the system handles the message.
bool Dispatch(MainWindow& window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
        case WM_SIZE: OnSize(window, wParam, LOWORD(lParam), HIWORD(lParam)); return true;
        case WM_COMMAND: return OnCommand(window, LOWORD(wParam), HIWORD(wParam));
        case WM_NOTIFY: result = OnNotify(window, *reinterpret_cast<NMHDR*>(lParam)); return true;
        case WM_TIMER: OnTimer(window, wParam); return true;
        case eventlog::WM_CHANNELS_TREE_BUILT: OnChannelsTreeBuilt(window); return true;
        case eventlog::WM_RECORD_COUNT_READY:
            OnRecordCountReady(window, wParam,
                               reinterpret_cast<const eventlog::EventNode*>(lParam));
            return true;
        case WM_CONTEXTMENU:
            return OnContextMenu(window, reinterpret_cast<HWND>(wParam), PointOf(lParam));
        case WM_SETCURSOR: result = OnSetCursor(window); return result != FALSE;
        case WM_LBUTTONDOWN: OnLeftButtonDown(window, PointOf(lParam)); return true;
        case WM_MOUSEMOVE: OnMouseMove(window, PointOf(lParam)); return true;
        case WM_LBUTTONUP: OnLeftButtonUp(window); return true;
        case WM_CAPTURECHANGED: OnCaptureLost(window); return true;
        default: return false;
    }
}

// The answer to a failed message: -1 ends the creation of the window.
LRESULT FailureResult(UINT message) {
    return message == WM_CREATE ? -1 : 0;
}

}  // namespace

LRESULT CALLBACK MainWindowProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        LRESULT result = 0;
        if (DispatchWithoutState(handle, message, lParam) ||
            (g_mainWindow && Dispatch(*g_mainWindow, message, wParam, lParam, result))) {
            return result;
        }
    } catch (const std::exception& error) {
        diag::TraceException(error);
        return FailureResult(message);
    }
    // Children that outlive the state still notify; nobody is left to handle it.
    return message == WM_NOTIFY ? 0 : DefWindowProcW(handle, message, wParam, lParam);
}

}  // namespace tavrin::ui
