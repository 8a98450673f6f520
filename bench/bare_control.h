#pragma once

#include <cstddef>
#include <cwchar>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::bench {

inline constexpr wchar_t kHostClass[] = L"TavrinBenchHost";

inline LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == LVN_GETDISPINFOW) {
        const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lParam)->item;
        if ((item.mask & LVIF_TEXT) != 0) {
            std::swprintf(item.pszText, static_cast<std::size_t>(item.cchTextMax), L"Cell %d",
                          item.iItem);
        }
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// A control with the program's styles in an otherwise empty window.
class BareControl {
public:
    // The size is the control's, in pixels.
    BareControl(const wchar_t* controlClass, DWORD style, SIZE size = {980, 560}) {
        WNDCLASSW description{};
        description.lpfnWndProc = HostProc;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kHostClass;
        RegisterClassW(&description);
        const INITCOMMONCONTROLSEX classes{sizeof(classes),
                                           ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
        InitCommonControlsEx(&classes);
        host_ = CreateWindowExW(0, kHostClass, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                size.cx + 20, size.cy + 40, nullptr, nullptr, description.hInstance,
                                nullptr);
        control_ =
            CreateWindowExW(0, controlClass, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, size.cx,
                            size.cy, host_, nullptr, description.hInstance, nullptr);
    }
    ~BareControl() { DestroyWindow(host_); }
    BareControl(const BareControl&) = delete;
    BareControl& operator=(const BareControl&) = delete;

    HWND Handle() const { return control_; }

    void Settle() const {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        UpdateWindow(control_);
    }

private:
    HWND host_;
    HWND control_;
};

// An owner-data list view with the styles and the number of columns of the program's.
class BareList : public BareControl {
public:
    explicit BareList(int rows, SIZE size = {980, 560})
        : BareControl(WC_LISTVIEWW, WS_BORDER | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_OWNERDATA,
                      size) {
        ListView_SetExtendedListViewStyle(
            Handle(), LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 140;
        for (int i = 0; i < 6; ++i) {
            ListView_InsertColumn(Handle(), i, &column);
        }
        SetRows(rows);
        Settle();
    }

    void SetRows(int rows) const { ListView_SetItemCountEx(Handle(), rows, LVSICF_NOSCROLL); }
};

// The size of another window, of any process.
inline SIZE SizeOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace tavrin::bench
