#include "ui/controls/about_box.h"

#include <commctrl.h>
#include <shellapi.h>

#include "resource.h"

namespace tavrin::ui {
namespace {

INT_PTR OnCommand(HWND dialog, WORD id) {
    if (id != IDOK && id != IDCANCEL) {
        return FALSE;
    }
    EndDialog(dialog, id);
    return TRUE;
}

void OpenLink(const NMLINK& click) {
    ShellExecuteW(nullptr, L"open", click.item.szUrl, nullptr, nullptr, SW_SHOWNORMAL);
}

// The tab's page is its only child.
void ShowTabPage(HWND tab) {
    ShowWindow(GetWindow(tab, GW_CHILD), TabCtrl_GetCurSel(tab) == 0 ? SW_SHOW : SW_HIDE);
}

// The details tab notifies the main window, so its branch never runs. With a single tab nothing is
// lost.
INT_PTR OnNotify(const NMHDR& notification) {
    const UINT_PTR id = notification.idFrom;
    if (notification.code == NM_CLICK && (id == IDC_ICONS_LINK || id == IDC_TIP_LINK)) {
        OpenLink(reinterpret_cast<const NMLINK&>(notification));
    } else if (notification.code == TCN_SELCHANGE && id == IDC_DETAILS_TAB) {
        ShowTabPage(notification.hwndFrom);
    }
    return FALSE;
}

INT_PTR CALLBACK AboutBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: return TRUE;
        case WM_COMMAND: return OnCommand(dialog, LOWORD(wParam));
        case WM_NOTIFY: return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        default: return FALSE;
    }
}

}  // namespace

void ShowAboutBox(HWND owner) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_ABOUT), owner, AboutBoxProc, 0);
}

}  // namespace tavrin::ui
