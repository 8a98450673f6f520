#include "window/controls/main_window_controls.h"

#include <algorithm>
#include <functional>

#include "resource.h"

namespace tavrin::test {
namespace {

bool SameClass(HWND window, const wchar_t* name) {
    return _wcsicmp(ClassOf(window).c_str(), name) == 0;
}

HWND FindChild(HWND parent, const std::function<bool(HWND)>& matches) {
    HWND child = parent == nullptr ? nullptr : GetWindow(parent, GW_CHILD);
    while (child != nullptr && !matches(child)) {
        child = GetWindow(child, GW_HWNDNEXT);
    }
    return child;
}

HWND ChildOf(HWND parent, const wchar_t* className, int id) {
    return FindChild(parent, [&](HWND child) {
        return GetDlgCtrlID(child) == id && SameClass(child, className);
    });
}

HWND ChildWithText(HWND parent, const wchar_t* className, const wchar_t* text) {
    return FindChild(
        parent, [&](HWND child) { return SameClass(child, className) && TextOf(child) == text; });
}

HWND OnlyChild(HWND parent, const wchar_t* className) {
    return FindChild(parent, [&](HWND child) { return SameClass(child, className); });
}

// The spare static and the sources frame share the id 1103; only the frame clips siblings.
HWND Frame1103(HWND parent, bool clipsSiblings) {
    return FindChild(parent, [&](HWND child) {
        const LONG_PTR style = GetWindowLongPtrW(child, GWL_STYLE);
        return GetDlgCtrlID(child) == IDC_SOURCES_FRAME &&
               ((style & WS_CLIPSIBLINGS) != 0) == clipsSiblings;
    });
}

void FindToolbarControls(MainWindowControls& controls) {
    controls.filterEdit = ChildOf(controls.toolbar, L"Edit", IDC_FILTER_EDIT);
    controls.fromLabel = ChildWithText(controls.toolbar, L"Static", L"From:");
    controls.fromPicker = ChildOf(controls.toolbar, L"SysDateTimePick32", IDC_FROM_PICKER);
    controls.toLabel = ChildWithText(controls.toolbar, L"Static", L"To:");
    controls.toPicker = ChildOf(controls.toolbar, L"SysDateTimePick32", IDC_TO_PICKER);
}

void FindDetailsControls(MainWindowControls& controls) {
    controls.tab = ChildOf(controls.detailsFrame, L"SysTabControl32", IDC_DETAILS_TAB);
    controls.tabPage = OnlyChild(controls.tab, L"Static");
    controls.detailsEdit = ChildOf(controls.tabPage, L"Edit", IDC_DETAILS_EDIT);
}

void FindHeaderLabels(MainWindowControls& controls) {
    controls.loadedCaption = ChildOf(controls.headerPane, L"Static", IDC_LOADED_CAPTION);
    controls.totalCaption = ChildOf(controls.headerPane, L"Static", IDC_TOTAL_CAPTION);
    controls.loadedValue = ChildOf(controls.headerPane, L"Static", IDC_LOADED_VALUE);
    controls.totalValue = ChildOf(controls.headerPane, L"Static", IDC_TOTAL_VALUE);
    controls.nodeName = ChildOf(controls.headerPane, L"Static", IDC_NODE_NAME);
}

void FindSourcesControls(HWND mainWindow, MainWindowControls& controls) {
    controls.sourcesCaption = ChildOf(mainWindow, L"Static", IDC_SOURCES_CAPTION);
    controls.sourcesSearch = ChildOf(mainWindow, L"Edit", IDC_SOURCES_SEARCH);
    controls.sourcesList = ChildOf(mainWindow, L"SysListView32", IDC_SOURCES_LIST);
    controls.showAllSources = ChildOf(mainWindow, L"Button", IDC_SHOW_ALL_SOURCES);
}

}  // namespace

MainWindowControls FindControls(HWND mainWindow) {
    MainWindowControls controls;
    controls.toolbar = ChildOf(mainWindow, L"ToolbarWindow32", IDC_TOOLBAR);
    controls.statusBar = ChildOf(mainWindow, L"msctls_statusbar32", IDC_STATUS_BAR);
    controls.tree = ChildOf(mainWindow, L"SysTreeView32", IDC_CHANNEL_TREE);
    controls.spareStatic = Frame1103(mainWindow, false);
    controls.sourcesFrame = Frame1103(mainWindow, true);
    controls.detailsFrame = ChildOf(mainWindow, L"Static", IDC_DETAILS_FRAME);
    controls.list = ChildOf(mainWindow, L"SysListView32", IDC_EVENT_LIST);
    controls.listHeader = OnlyChild(controls.list, L"SysHeader32");
    controls.headerPane = ChildOf(mainWindow, L"HeaderPane", IDC_HEADER_PANE);
    FindToolbarControls(controls);
    FindDetailsControls(controls);
    FindHeaderLabels(controls);
    FindSourcesControls(mainWindow, controls);
    return controls;
}

std::wstring TextOf(HWND window) {
    const auto length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const auto copied =
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[128] = L"";
    GetClassNameW(window, name, 128);
    return name;
}

RECT RectIn(HWND reference, HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, reference, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

SIZE ClientSize(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    return {rect.right, rect.bottom};
}

}  // namespace tavrin::test
