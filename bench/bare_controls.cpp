// Measures the bare Windows controls doing what the program makes them do: the lower bound for any
// program that uses them.

#include <string>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "bench/bare_control.h"
#include "bench/samples.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 25;
constexpr int kKeyRuns = 5;
constexpr int kMillion = 1'000'000;
constexpr int kFewRows = 100;
constexpr int kFolders = 400;
constexpr int kChannelsEach = 3;

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
