#include "ui/create_controls.h"

#include <commctrl.h>

#include "resource.h"
#include "ui/controls/accelerator_forwarding.h"
#include "ui/controls/details_pane.h"
#include "ui/controls/event_list.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/fonts.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using ControlSlot = HWND Controls::*;

constexpr ControlSlot kMainWindow = nullptr;
constexpr Box kPlacedByLayout{0, 0, 0, 0};

// The spare static is empty and out of sight: it keeps the place once meant for the header pane.
constexpr PaneSizes kFirstPanes{};
constexpr Box kSparePlace{kFirstPanes.tree + kSplitterWidth, 0, 96 - kFirstPanes.tree, 30};

struct ControlSpec {
    ControlSlot slot;
    ControlSlot parent;
    const wchar_t* className;
    int id;
    const wchar_t* text;
    DWORD exStyle;
    DWORD style;  // besides WS_CHILD and WS_VISIBLE
    Box box;
    FontRole font;
    void (*setUp)(MainWindow&, HWND);
};

using C = Controls;

// In order of creation.
constexpr ControlSpec kWindowControls[] = {
    {&C::toolbar, kMainWindow, TOOLBARCLASSNAMEW, IDC_TOOLBAR, L"", 0, 0, kPlacedByLayout,
     FontRole::None, SetUpToolbar},
    {&C::filterEdit,
     &C::toolbar,
     L"Edit",
     IDC_FILTER_EDIT,
     L"",
     WS_EX_CLIENTEDGE,
     ES_AUTOHSCROLL,
     {5, 0, 220, 21},
     FontRole::Normal,
     SetUpFilterEdit},
    {&C::fromLabel,
     &C::toolbar,
     L"STATIC",
     0,
     L"From:",
     0,
     SS_CENTERIMAGE,
     {260, 0, 30, 20},
     FontRole::Stock,
     nullptr},
    {&C::fromPicker,
     &C::toolbar,
     DATETIMEPICK_CLASSW,
     IDC_FROM_PICKER,
     L"",
     0,
     WS_TABSTOP | DTS_SHOWNONE,
     {292, 0, 180, 20},
     FontRole::Stock,
     SetUpPicker},
    {&C::toLabel,
     &C::toolbar,
     L"STATIC",
     0,
     L"To:",
     0,
     SS_CENTERIMAGE,
     {482, 0, 20, 20},
     FontRole::Stock,
     nullptr},
    {&C::toPicker,
     &C::toolbar,
     DATETIMEPICK_CLASSW,
     IDC_TO_PICKER,
     L"",
     0,
     WS_TABSTOP | DTS_SHOWNONE,
     {504, 0, 180, 20},
     FontRole::Stock,
     SetUpPicker},
    {&C::statusBar, kMainWindow, STATUSCLASSNAMEW, IDC_STATUS_BAR, L"", 0, SBARS_SIZEGRIP,
     kPlacedByLayout, FontRole::None, SetUpStatusBar},
    {&C::tree, kMainWindow, WC_TREEVIEWW, IDC_CHANNEL_TREE, L"", 0,
     WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS,
     kPlacedByLayout, FontRole::None, nullptr},
    {&C::spareStatic, kMainWindow, L"STATIC", IDC_SOURCES_FRAME, L"", 0, WS_BORDER, kSparePlace,
     FontRole::None, nullptr},
    {&C::sourcesFrame, kMainWindow, L"STATIC", IDC_SOURCES_FRAME, L"", 0,
     WS_BORDER | WS_CLIPSIBLINGS, kPlacedByLayout, FontRole::None, nullptr},
    {&C::detailsFrame, kMainWindow, L"STATIC", IDC_DETAILS_FRAME, L"", 0, WS_BORDER,
     kPlacedByLayout, FontRole::None, nullptr},
    {&C::tab, &C::detailsFrame, WC_TABCONTROLW, IDC_DETAILS_TAB, L"", 0, WS_CLIPSIBLINGS,
     kPlacedByLayout, FontRole::Bold, SetUpDetailsTab},
    {&C::tabPage, &C::tab, L"STATIC", 0, L"", 0, 0, kPlacedByLayout, FontRole::None, nullptr},
    {&C::detailsEdit, &C::tabPage, L"Edit", IDC_DETAILS_EDIT, L"", WS_EX_CLIENTEDGE,
     WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY, kPlacedByLayout, FontRole::Normal,
     nullptr},
    {&C::list, kMainWindow, WC_LISTVIEWW, IDC_EVENT_LIST, L"", WS_EX_CLIENTEDGE,
     WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | LVS_OWNERDATA,
     kPlacedByLayout, FontRole::None, SetUpEventList},
    {&C::headerPane, kMainWindow, kHeaderPaneClass, IDC_HEADER_PANE, L"", 0, 0, kPlacedByLayout,
     FontRole::None, nullptr},
    {&C::loadedCaption, &C::headerPane, L"Static", IDC_LOADED_CAPTION, L"Loaded: ", 0, 0,
     kPlacedByLayout, FontRole::Normal, nullptr},
    {&C::totalCaption, &C::headerPane, L"Static", IDC_TOTAL_CAPTION, L" Total: ", 0, 0,
     kPlacedByLayout, FontRole::Normal, nullptr},
    {&C::loadedValue, &C::headerPane, L"Static", IDC_LOADED_VALUE, L"", 0, 0, kPlacedByLayout,
     FontRole::Normal, nullptr},
    {&C::totalValue, &C::headerPane, L"Static", IDC_TOTAL_VALUE, L"", 0, 0, kPlacedByLayout,
     FontRole::Normal, nullptr},
    {&C::nodeName, &C::headerPane, L"Static", IDC_NODE_NAME, L"", 0, SS_RIGHT, kPlacedByLayout,
     FontRole::Bold, nullptr},
};

// Created after the event list's columns.
constexpr ControlSpec kSourcesControls[] = {
    {&C::sourcesCaption, kMainWindow, L"Static", IDC_SOURCES_CAPTION, L"Sources", 0, SS_CENTERIMAGE,
     kPlacedByLayout, FontRole::Bold, nullptr},
    {&C::sourcesSearch, kMainWindow, L"Edit", IDC_SOURCES_SEARCH, L"", WS_EX_CLIENTEDGE,
     ES_AUTOHSCROLL, kPlacedByLayout, FontRole::Normal, SetUpSourcesSearch},
    {&C::sourcesList, kMainWindow, WC_LISTVIEWW, IDC_SOURCES_LIST, L"", WS_EX_CLIENTEDGE,
     LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER, kPlacedByLayout,
     FontRole::Normal, SetUpSourcesList},
    {&C::showAllSources, kMainWindow, L"Button", IDC_SHOW_ALL_SOURCES, L"Show all sources", 0,
     BS_PUSHBUTTON, kPlacedByLayout, FontRole::Normal, nullptr},
};

// The controls that can have the focus. The toolbar and the main window pass commands on by
// themselves.
constexpr ControlSlot kFocusControls[] = {
    &C::filterEdit,    &C::fromPicker,  &C::toPicker,       &C::tree, &C::list,
    &C::sourcesSearch, &C::sourcesList, &C::showAllSources, &C::tab,  &C::detailsEdit};

void CreateControl(MainWindow& window, HINSTANCE instance, const ControlSpec& entry) {
    const HWND parent = entry.parent == kMainWindow ? window.handle : window.controls.*entry.parent;
    const HWND control = CreateWindowExW(
        entry.exStyle, entry.className, entry.text, WS_CHILD | WS_VISIBLE | entry.style,
        entry.box.x, entry.box.y, entry.box.width, entry.box.height, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(entry.id)), instance, nullptr);
    window.controls.*entry.slot = control;
    if (const HFONT font = window.fonts.For(entry.font)) {
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
    if (entry.setUp != nullptr) {
        entry.setUp(window, control);
    }
}

}  // namespace

void CreateControls(MainWindow& window, HINSTANCE instance) {
    RegisterHeaderPaneClass(instance);
    window.fonts = CreateFonts();
    for (const ControlSpec& entry : kWindowControls) {
        CreateControl(window, instance, entry);
    }
    InsertColumns(window.controls.list, window.fonts.listHeader);
    for (const ControlSpec& entry : kSourcesControls) {
        CreateControl(window, instance, entry);
    }
    PrepareSourcesPanel(window);
    for (const ControlSlot slot : kFocusControls) {
        ForwardAcceleratorCommands(window.controls.*slot);
    }
    ForwardAcceleratorCommandsOfParts(window.controls.fromPicker);
    ForwardAcceleratorCommandsOfParts(window.controls.toPicker);
}

}  // namespace tavrin::ui
