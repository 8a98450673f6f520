#include "ui/controls/splitters.h"

#include "ui/controls/layout.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

POINT CursorInClient(HWND window) {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    return point;
}

bool InHeightOf(HWND child, HWND window, LONG y) {
    RECT box{};
    GetWindowRect(child, &box);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&box), 2);
    return y >= box.top && y <= box.bottom;
}

Splitter SplitterAt(const MainWindow& window, POINT point) {
    return HitSplitter(point.x, point.y, window.panes, ClientArea(window));
}

const wchar_t* CursorAt(const MainWindow& window, POINT point) {
    switch (SplitterAt(window, point)) {
        case Splitter::Left:
        case Splitter::Right: return IDC_SIZEWE;
        case Splitter::Bottom: return IDC_SIZENS;
        case Splitter::None: break;
    }
    return InHeightOf(window.controls.headerPane, window.handle, point.y) ? IDC_ARROW : nullptr;
}

}  // namespace

bool OnSetCursor(const MainWindow& window) {
    const wchar_t* const cursor = CursorAt(window, CursorInClient(window.handle));
    if (cursor == nullptr) {
        return false;
    }
    SetCursor(LoadCursorW(nullptr, cursor));
    return true;
}

void OnLeftButtonDown(MainWindow& window, POINT point) {
    const Splitter hit = SplitterAt(window, point);
    if (hit != Splitter::None) {
        SetCapture(window.handle);
        window.dragging = hit;
    }
}

void OnMouseMove(MainWindow& window, POINT point) {
    if (window.dragging == Splitter::None) {
        return;
    }
    const Area area = ClientArea(window);
    window.panes = DragSplitter(window.dragging, point.x, point.y, window.panes, area);
    SendMessageW(window.handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(area.width, area.height));
}

void OnLeftButtonUp(MainWindow& window) {
    if (window.dragging != Splitter::None) {
        ReleaseCapture();
        window.dragging = Splitter::None;
    }
}

void OnCaptureLost(MainWindow& window) {
    window.dragging = Splitter::None;
}

}  // namespace tavrin::ui
