#include "ui/splitters.h"

#include <algorithm>

#include "ui/layout.h"
#include "ui/main_window.h"

namespace tavrin::ui {
namespace {

constexpr int kMinWidth = 100;
constexpr int kMinHeight = 80;

// The strip of a splitter that begins at first.
bool InStrip(int position, int first) {
    return position >= first && position <= first + kSplitterWidth;
}

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

const wchar_t* CursorAt(const MainWindow& window, POINT point) {
    switch (HitSplitter(point, window.panes, ClientArea(window))) {
        case Splitter::Left:
        case Splitter::Right: return IDC_SIZEWE;
        case Splitter::Bottom: return IDC_SIZENS;
        case Splitter::None: break;
    }
    return InHeightOf(window.controls.headerPane, window.handle, point.y) ? IDC_ARROW : nullptr;
}

}  // namespace

Splitter HitSplitter(POINT point, const PaneSizes& panes, const Area& area) {
    if (InStrip(point.x, panes.tree)) {
        return Splitter::Left;
    }
    if (InStrip(point.x, area.width - panes.sources - kSplitterWidth)) {
        return Splitter::Right;
    }
    if (InStrip(point.y, area.height - area.status - panes.details - kSplitterWidth)) {
        return Splitter::Bottom;
    }
    return Splitter::None;
}

PaneSizes DragSplitter(Splitter splitter, POINT point, PaneSizes panes, const Area& area) {
    const int x = point.x;
    const int y = point.y;
    switch (splitter) {
        case Splitter::Left:
            panes.tree = std::max(kMinWidth, std::min(x, area.width - panes.sources - kMinWidth));
            break;
        case Splitter::Right:
            panes.sources =
                std::max(kMinWidth, std::min(area.width - x, area.width - panes.tree - kMinWidth));
            break;
        case Splitter::Bottom:
            panes.details = std::max(
                kMinHeight, std::min(area.height - y - area.status,
                                     area.height - area.status - area.toolbar - kMinHeight));
            break;
        case Splitter::None: break;
    }
    return panes;
}

bool OnSetCursor(const MainWindow& window) {
    const wchar_t* const cursor = CursorAt(window, CursorInClient(window.handle));
    if (cursor == nullptr) {
        return false;
    }
    SetCursor(LoadCursorW(nullptr, cursor));
    return true;
}

void OnLeftButtonDown(MainWindow& window, POINT point) {
    const Splitter hit = HitSplitter(point, window.panes, ClientArea(window));
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
    window.panes = DragSplitter(window.dragging, point, window.panes, area);
    SendMessageW(window.handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(area.width, area.height));
}

void OnLeftButtonUp(MainWindow& window) {
    if (window.dragging != Splitter::None) {
        ReleaseCapture();
        window.dragging = Splitter::None;
    }
}

}  // namespace tavrin::ui
