// Measures the bare Windows controls doing what the program makes them do: the lower bound for any
// program that uses them.

#include <cwchar>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "bench/samples.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 25;
constexpr int kKeyRuns = 5;
constexpr int kMillion = 1'000'000;
constexpr int kFewRows = 100;
constexpr int kColumns = 6;
constexpr int kFolders = 400;
constexpr int kChannelsEach = 3;
constexpr wchar_t kHostClass[] = L"TavrinBenchHost";

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
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
    BareControl(const wchar_t* controlClass, DWORD style) {
        WNDCLASSW description{};
        description.lpfnWndProc = HostProc;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kHostClass;
        RegisterClassW(&description);
        const INITCOMMONCONTROLSEX classes{sizeof(classes),
                                           ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
        InitCommonControlsEx(&classes);
        host_ = CreateWindowExW(0, kHostClass, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000,
                                600, nullptr, nullptr, description.hInstance, nullptr);
        control_ = CreateWindowExW(0, controlClass, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 980,
                                   560, host_, nullptr, description.hInstance, nullptr);
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

class BareList : public BareControl {
public:
    explicit BareList(int rows)
        : BareControl(WC_LISTVIEWW, WS_BORDER | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_OWNERDATA) {
        ListView_SetExtendedListViewStyle(
            Handle(), LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 140;
        for (int i = 0; i < kColumns; ++i) {
            ListView_InsertColumn(Handle(), i, &column);
        }
        SetRows(rows);
        Settle();
    }

    void SetRows(int rows) const { ListView_SetItemCountEx(Handle(), rows, LVSICF_NOSCROLL); }
};

TEST(BareControls, AList) {
    const BareList list(kFewRows);
    Samples taking;
    Samples painting;
    for (int run = 1; run <= kRuns; ++run) {
        list.Settle();
        Stopwatch watch;
        list.SetRows(kFewRows + run);
        taking.Add(watch.Milliseconds());
        watch.Restart();
        UpdateWindow(list.Handle());
        painting.Add(watch.Milliseconds());
    }
    PrintHeadline("the list control by itself");
    taking.Print("taking another number of rows", "ms");
    painting.Print("painting them", "ms");
}

TEST(BareControls, AListOfAMillionRows) {
    const BareList list(kMillion);
    SendMessageW(list.Handle(), WM_KEYDOWN, VK_HOME, 0);
    Samples paging;
    for (int run = 0; run < kKeyRuns; ++run) {
        list.Settle();
        const Stopwatch watch;
        SendMessageW(list.Handle(), WM_KEYDOWN, VK_NEXT, 0);
        paging.Add(watch.Milliseconds());
    }
    paging.Print("a page key among 1,000,000 rows, one of them selected", "ms");
}

HTREEITEM Insert(HWND tree, HTREEITEM parent, std::wstring name) {
    TVINSERTSTRUCTW insertion{};
    insertion.hParent = parent;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT | TVIF_PARAM;
    insertion.item.pszText = name.data();
    return TreeView_InsertItem(tree, &insertion);
}

void FillTree(HWND tree) {
    const HTREEITEM root = Insert(tree, TVI_ROOT, L"Root");
    for (int i = 0; i < kFolders; ++i) {
        const HTREEITEM folder = Insert(tree, root, L"Vendor-Component-" + std::to_wstring(i));
        for (int j = 0; j < kChannelsEach; ++j) {
            Insert(tree, folder, L"Channel" + std::to_wstring(j));
        }
    }
}

TEST(BareControls, ATree) {
    Samples filling;
    for (int run = 0; run < kRuns; ++run) {
        const BareControl tree(WC_TREEVIEWW, TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT);
        SendMessageW(tree.Handle(), WM_SETREDRAW, FALSE, 0);
        const Stopwatch watch;
        FillTree(tree.Handle());
        filling.Add(watch.Milliseconds());
    }
    PrintHeadline("the tree control by itself");
    filling.Print("taking 1,600 items, which it does not paint", "ms");
}

}  // namespace
}  // namespace tavrin::bench
