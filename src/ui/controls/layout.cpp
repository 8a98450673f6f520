#include "ui/controls/layout.h"

#include <initializer_list>

#include <windows.h>
#include <commctrl.h>

#include "ui/controls/event_list.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

constexpr UINT kPlaceFlags = SWP_NOZORDER | SWP_NOACTIVATE;

struct Placement {
    HWND control;
    Box box;
};

RECT ClientRect(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

int Width(const RECT& box) {
    return box.right - box.left;
}
int Height(const RECT& box) {
    return box.bottom - box.top;
}

int BarHeight(HWND bar, HWND window) {
    RECT box{};
    GetWindowRect(bar, &box);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&box), 2);
    return Height(box);
}

// Moves all controls at once, so that no intermediate state is painted.
void PlaceTogether(std::initializer_list<Placement> placements) {
    HDWP batch = BeginDeferWindowPos(static_cast<int>(placements.size()));
    for (const auto& [control, box] : placements) {
        if (batch == nullptr) {
            return;
        }
        batch = DeferWindowPos(batch, control, nullptr, box.x, box.y, box.width, box.height,
                               kPlaceFlags);
    }
    EndDeferWindowPos(batch);
}

void PlaceSourcesPanel(const Controls& controls, const MainLayout& layout) {
    const Placement placements[] = {{controls.sourcesCaption, layout.sourcesCaption},
                                    {controls.sourcesSearch, layout.sourcesSearch},
                                    {controls.sourcesList, layout.sourcesList},
                                    {controls.showAllSources, layout.showAllSources}};
    for (const auto& [control, box] : placements) {
        MoveWindow(control, box.x, box.y, box.width, box.height, TRUE);
    }
    ListView_SetColumnWidth(controls.sourcesList, 0, Width(ClientRect(controls.sourcesList)));
}

void PlaceHeaderLabels(const Controls& controls, const MainLayout& layout) {
    PlaceTogether({{controls.loadedCaption, layout.loadedCaption},
                   {controls.loadedValue, layout.loadedValue},
                   {controls.totalCaption, layout.totalCaption},
                   {controls.totalValue, layout.totalValue},
                   {controls.nodeName, layout.nodeName}});
    InvalidateRect(controls.headerPane, nullptr, FALSE);
}

void FillDetailsFrame(const Controls& controls) {
    const RECT frame = ClientRect(controls.detailsFrame);
    MoveWindow(controls.tab, 0, 0, Width(frame), Height(frame), TRUE);
}

// The page fills the tab's display area; the edit fills the page.
void FillTabPage(const Controls& controls) {
    RECT display = ClientRect(controls.tab);
    TabCtrl_AdjustRect(controls.tab, FALSE, &display);
    SetWindowPos(controls.tabPage, nullptr, display.left, display.top, Width(display),
                 Height(display), SWP_NOZORDER | SWP_SHOWWINDOW);
    const RECT page = ClientRect(controls.tabPage);
    const Box edit = DetailsEditBox(Width(page), Height(page));
    MoveWindow(controls.detailsEdit, edit.x, edit.y, edit.width, edit.height, TRUE);
}

}  // namespace

Area ClientArea(const MainWindow& window) {
    const RECT client = ClientRect(window.handle);
    return {Width(client), Height(client), BarHeight(window.controls.toolbar, window.handle),
            BarHeight(window.controls.statusBar, window.handle)};
}

void LayOut(MainWindow& window, int width, int height) {
    const Controls& controls = window.controls;
    const Area area{width, height, BarHeight(controls.toolbar, window.handle),
                    BarHeight(controls.statusBar, window.handle)};
    window.panes = FitPanes(window.panes, area);
    const MainLayout layout = ComputeLayout(window.panes, area);

    SendMessageW(controls.list, WM_SETREDRAW, FALSE, 0);
    PlaceTogether({{controls.tree, layout.tree},
                   {controls.sourcesFrame, layout.sourcesFrame},
                   {controls.detailsFrame, layout.detailsFrame},
                   {controls.headerPane, layout.headerPane},
                   {controls.list, layout.list}});
    PlaceSourcesPanel(controls, layout);
    PlaceHeaderLabels(controls, layout);
    FillDetailsFrame(controls);
    SendMessageW(controls.statusBar, WM_SIZE, 0, 0);
    SendMessageW(controls.toolbar, WM_SIZE, 0, 0);
    SendMessageW(controls.list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(controls.list, nullptr, TRUE);
    ResetColumnWidths(controls.list);
    FillTabPage(controls);
}

}  // namespace tavrin::ui
