// Messages to controls and calls of Windows whose effect the finished window does not show.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/loading/workers.h"
#include "support/import_patch.h"
#include "ui/commands.h"
#include "ui/controls/event_list.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/layout.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/tree_view.h"
#include "ui/controls/window_state.h"

#include "recording_control.h"

namespace tavrin::ui {
namespace {

using testing::ElementsAre;

// Records the image lists and icons that the program requests.
class ImageRequests {
public:
    ImageRequests() {
        lists.clear();
        icons.clear();
    }

    struct List {
        int width;
        int height;
        UINT flags;
        int initial;
        int grow;
        bool operator==(const List&) const = default;
    };
    inline static std::vector<List> lists;
    inline static std::vector<UINT_PTR> icons;

private:
    static HIMAGELIST WINAPI Create(int width, int height, UINT flags, int initial, int grow) {
        lists.push_back({width, height, flags, initial, grow});
        return nullptr;
    }
    static HANDLE WINAPI Load(HINSTANCE, LPCWSTR name, UINT type, int width, int height, UINT) {
        EXPECT_EQ(type, static_cast<UINT>(IMAGE_ICON));
        EXPECT_EQ(width, 16);
        EXPECT_EQ(height, 16);
        icons.push_back(reinterpret_cast<UINT_PTR>(name));
        return nullptr;
    }

    test::ImportPatch<decltype(ImageList_Create)> create_{"ImageList_Create", Create};
    test::ImportPatch<decltype(LoadImageW)> load_{"LoadImageW", Load};
};

TEST(EventList, AddsItsImagesInTheOrderOfTheLevels) {
    const RecordingControl list;
    MainWindow window(nullptr);
    const ImageRequests requests;
    SetUpEventList(window, list.handle());
    EXPECT_THAT(requests.lists,
                ElementsAre(ImageRequests::List{16, 16, ILC_COLOR32 | ILC_MASK, 4, 4}));
    EXPECT_THAT(requests.icons, ElementsAre(144, 145, 146, 148, 147));
}

TEST(EventList, TakesItsRowCountWithoutScrolling) {
    const RecordingControl list;
    MainWindow window(nullptr);
    window.controls.list = list.handle();
    UpdateRowCount(window);
    const auto counts = list.Sent(LVM_SETITEMCOUNT);
    ASSERT_EQ(counts.size(), 1u);
    EXPECT_EQ(counts[0].wParam, 0u);
    EXPECT_EQ(counts[0].lParam, LVSICF_NOSCROLL);
}

BOOL WINAPI RefuseName(LPWSTR, LPDWORD) {
    return FALSE;
}

TEST(StatusBar, ShowsADashIfTheComputerHasNoName) {
    const test::ImportPatch<decltype(GetComputerNameW)> patch("GetComputerNameW", RefuseName);
    RecordingControl bar;
    std::vector<std::wstring> names;
    bar.onMessage = [&](const SentMessage& sent) {
        if (sent.message == SB_SETTEXTW && sent.wParam == 0) {
            names.emplace_back(reinterpret_cast<const wchar_t*>(sent.lParam));
        }
    };
    MainWindow window(nullptr);

    SetUpStatusBar(window, bar.handle());

    EXPECT_THAT(names, ElementsAre(L"-"));
}

TEST(Toolbar, GetsTheButtonSizeAndTheStandardBitmap) {
    RecordingControl toolbar;
    MainWindow window(nullptr);
    SetUpToolbar(window, toolbar.handle());
    const auto sizes = toolbar.Sent(TB_BUTTONSTRUCTSIZE);
    ASSERT_EQ(sizes.size(), 1u);
    EXPECT_EQ(sizes[0].wParam, sizeof(TBBUTTON));
    ASSERT_EQ(toolbar.bitmaps.size(), 1u);
    EXPECT_EQ(toolbar.bitmaps[0].hInst, HINST_COMMCTRL);
    EXPECT_EQ(toolbar.bitmaps[0].nID, static_cast<UINT_PTR>(IDB_STD_SMALL_COLOR));
}

// Shows a tree of the root and two children in a control that records its messages.
class TreeFilling : public testing::Test {
protected:
    TreeFilling() {
        auto tree = std::make_shared<eventlog::ChannelsTree>();
        tree->SetRootDescriptor(
            tree->AddVertex(std::make_shared<eventlog::EventNode>(L"Root", L"Root", 0x101)));
        tree->AddNode(std::make_shared<eventlog::EventNode>(L"b", L"b", 0x41));
        tree->AddNode(std::make_shared<eventlog::EventNode>(L"B", L"B", 0x0A));
        eventlog::g_eventApiContext = std::make_shared<eventlog::EventAPIContext>();
        eventlog::g_eventApiContext->tree = tree;
        control_.answer = kRootItem;
        window_.controls.tree = control_.handle();
        OnChannelsTreeBuilt(window_);
    }
    ~TreeFilling() override { eventlog::g_eventApiContext.reset(); }

    static constexpr LRESULT kRootItem = 0x4711;

    ImageRequests requests_;
    RecordingControl control_;
    MainWindow window_{nullptr};
};

TEST_F(TreeFilling, AddsTheTreesImagesInTheOrderOfTheirIndexes) {
    EXPECT_THAT(requests_.lists, ElementsAre(ImageRequests::List{16, 16, ILC_COLOR32, 1, 1}));
    EXPECT_THAT(requests_.icons, ElementsAre(133, 136, 137, 139, 138, 140, 141, 142));
    const auto set = control_.Sent(TVM_SETIMAGELIST);
    ASSERT_EQ(set.size(), 1u);
    EXPECT_EQ(set[0].wParam, static_cast<WPARAM>(TVSIL_NORMAL));
}

TEST_F(TreeFilling, InsertsEachItemLastUnderItsParent) {
    const auto& inserted = control_.insertions;
    ASSERT_EQ(inserted.size(), 3u);
    EXPECT_EQ(inserted[0].hParent, TVI_ROOT);
    for (const TVINSERTSTRUCTW& insertion : inserted) {
        EXPECT_EQ(insertion.hInsertAfter, TVI_LAST);
        EXPECT_EQ(insertion.item.mask,
                  static_cast<UINT>(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM));
        EXPECT_EQ(insertion.item.iImage, insertion.item.iSelectedImage);
    }
    EXPECT_EQ(inserted[1].hParent, reinterpret_cast<HTREEITEM>(kRootItem));
    EXPECT_EQ(inserted[1].item.lParam, 2) << "upper case sorts first";
    EXPECT_EQ(inserted[2].item.lParam, 1);
}

TEST_F(TreeFilling, LeavesEveryItemCollapsed) {
    EXPECT_TRUE(control_.Sent(TVM_EXPAND).empty());
}

TEST(LayOut, MovesTheControlsWhileTheListsRedrawIsOff) {
    static std::vector<std::string> steps;
    steps.clear();
    struct Batches {
        static HDWP WINAPI Begin(int count) {
            steps.push_back("batch of " + std::to_string(count));
            return nullptr;
        }
    };
    const test::ImportPatch<decltype(BeginDeferWindowPos)> patch("BeginDeferWindowPos",
                                                                 Batches::Begin);
    const RecordingControl frame;
    RecordingControl list;
    list.onMessage = [](const SentMessage& sent) {
        if (sent.message == WM_SETREDRAW) {
            steps.push_back(sent.wParam == FALSE ? "redraw off" : "redraw on");
        }
    };
    MainWindow window(frame.handle());
    window.controls.list = list.handle();

    LayOut(window, 900, 600);

    EXPECT_THAT(steps, ElementsAre("redraw off", "batch of 5", "batch of 5", "redraw on"));
}

// Records how the context menu is loaded, shown and destroyed.
struct MenuCalls {
    inline static UINT flags;
    inline static POINT point;
    inline static HMENU loaded;
    inline static int destroyed;

    static HMENU WINAPI Load(HINSTANCE, LPCWSTR name) {
        EXPECT_EQ(reinterpret_cast<UINT_PTR>(name), 130u);
        loaded = CreateMenu();
        AppendMenuW(loaded, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()), L"");
        return loaded;
    }
    static BOOL WINAPI Track(HMENU menu, UINT track, int x, int y, int, HWND, const RECT*) {
        EXPECT_EQ(menu, GetSubMenu(loaded, 0));
        flags = track;
        point = {x, y};
        return TRUE;
    }
    static BOOL WINAPI Destroy(HMENU menu) {
        EXPECT_EQ(menu, loaded);
        ++destroyed;
        return TRUE;
    }
};

TEST(ContextMenu, IsShownAtTheUnchangedPointAndDestroyed) {
    const test::ImportPatch<decltype(LoadMenuW)> load("LoadMenuW", MenuCalls::Load);
    const test::ImportPatch<decltype(TrackPopupMenu)> track("TrackPopupMenu", MenuCalls::Track);
    const test::ImportPatch<decltype(DestroyMenu)> destroy("DestroyMenu", MenuCalls::Destroy);
    MenuCalls::destroyed = 0;
    ShowListContextMenu(MainWindow(nullptr), {-1, -1});
    EXPECT_EQ(MenuCalls::flags, static_cast<UINT>(TPM_RIGHTBUTTON));
    EXPECT_EQ(MenuCalls::point.x, -1);
    EXPECT_EQ(MenuCalls::point.y, -1);
    EXPECT_EQ(MenuCalls::destroyed, 1);
}

}  // namespace
}  // namespace tavrin::ui
