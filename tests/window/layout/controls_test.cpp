#include <set>

#include <windows.h>
#include <commctrl.h>

#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/controls/main_window_controls.h"
#include "window/controls/screen.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

// These tests only read the window, so they share one program.
class ControlsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        app_ = std::make_unique<AppWindow>();
        ASSERT_TRUE(app_->WaitForTree());
    }

    static void TearDownTestSuite() {
        EXPECT_TRUE(ClosesCleanly(*app_));
        app_.reset();
    }

    static const MainWindowControls& Controls() { return app_->controls(); }

    static inline std::unique_ptr<AppWindow> app_;
};

using ControlField = HWND MainWindowControls::*;
using C = MainWindowControls;

struct ControlFacts {
    const char* name;
    ControlField control;
    const wchar_t* className;
    int id;
    ControlField parent;  // null: the main window
    const wchar_t* text;
    DWORD style;   // window styles, besides WS_CHILD and WS_VISIBLE, that must be set
    int ownStyle;  // the exact class-specific styles (low word), or kAnyStyle
    bool clientEdge;
    bool enabled = true;
};

constexpr int kAnyStyle = -1;
constexpr ControlField kMainWindow = nullptr;
constexpr int kTreeStyle = TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS;
constexpr int kDetailsStyle = ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY;
constexpr int kListStyle = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | LVS_OWNERDATA;
constexpr int kSourcesStyle = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER;

const ControlFacts kControls[] = {
    {"toolbar", &C::toolbar, L"ToolbarWindow32", IDC_TOOLBAR, kMainWindow, L"", 0, kAnyStyle,
     false},
    {"filter edit", &C::filterEdit, L"Edit", 40006, &C::toolbar, L"", 0, ES_AUTOHSCROLL, true},
    {"From label", &C::fromLabel, L"Static", 0, &C::toolbar, L"From:", 0, SS_CENTERIMAGE, false},
    // A date picker sets WS_EX_CLIENTEDGE itself.
    {"From picker", &C::fromPicker, L"SysDateTimePick32", 1003, &C::toolbar, nullptr, WS_TABSTOP,
     DTS_SHOWNONE, true},
    {"To label", &C::toLabel, L"Static", 0, &C::toolbar, L"To:", 0, SS_CENTERIMAGE, false},
    {"To picker", &C::toPicker, L"SysDateTimePick32", 1005, &C::toolbar, nullptr, WS_TABSTOP,
     DTS_SHOWNONE, true},
    {"status bar", &C::statusBar, L"msctls_statusbar32", 110, kMainWindow, nullptr, 0, kAnyStyle,
     false},
    {"channel tree", &C::tree, L"SysTreeView32", 1101, kMainWindow, L"", WS_BORDER, kTreeStyle,
     false},
    {"spare static", &C::spareStatic, L"Static", 1103, kMainWindow, L"", WS_BORDER, 0, false},
    {"sources frame", &C::sourcesFrame, L"Static", 1103, kMainWindow, L"",
     WS_BORDER | WS_CLIPSIBLINGS, 0, false},
    {"details frame", &C::detailsFrame, L"Static", 1104, kMainWindow, L"", WS_BORDER, 0, false},
    {"tab", &C::tab, L"SysTabControl32", 1108, &C::detailsFrame, L"", WS_CLIPSIBLINGS, 0, false},
    {"tab page", &C::tabPage, L"Static", 0, &C::tab, L"", 0, 0, false},
    {"details edit", &C::detailsEdit, L"Edit", 1109, &C::tabPage, L"", WS_VSCROLL, kDetailsStyle,
     true},
    {"event list", &C::list, L"SysListView32", 40004, kMainWindow, L"", WS_BORDER | WS_TABSTOP,
     kListStyle, true},
    {"header pane", &C::headerPane, L"HeaderPane", 1107, kMainWindow, L"", 0, 0, false},
    {"loaded caption", &C::loadedCaption, L"Static", 1111, &C::headerPane, L"Loaded: ", 0, 0,
     false},
    {"total caption", &C::totalCaption, L"Static", 1112, &C::headerPane, L" Total: ", 0, 0, false},
    {"loaded value", &C::loadedValue, L"Static", 1105, &C::headerPane, L"", 0, 0, false},
    {"total value", &C::totalValue, L"Static", 1110, &C::headerPane, L"", 0, 0, false},
    {"node name", &C::nodeName, L"Static", 1106, &C::headerPane, L"", 0, SS_RIGHT, false},
    {"sources caption", &C::sourcesCaption, L"Static", 1113, kMainWindow, L"Sources", 0,
     SS_CENTERIMAGE, false},
    {"sources search", &C::sourcesSearch, L"Edit", 1114, kMainWindow, L"", 0, ES_AUTOHSCROLL, true,
     false},
    {"sources list", &C::sourcesList, L"SysListView32", 1115, kMainWindow, L"", 0, kSourcesStyle,
     true, false},
    {"show all sources", &C::showAllSources, L"Button", 1116, kMainWindow, L"Show all sources", 0,
     BS_PUSHBUTTON, false, false},
};

TEST_F(ControlsTest, EveryControlHasItsClassIdParentTextAndStyle) {
    for (const ControlFacts& facts : kControls) {
        SCOPED_TRACE(facts.name);
        const HWND control = Controls().*facts.control;
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(_wcsicmp(ClassOf(control).c_str(), facts.className), 0);
        EXPECT_EQ(GetDlgCtrlID(control), facts.id);
        EXPECT_EQ(GetParent(control),
                  facts.parent == nullptr ? app_->window() : Controls().*facts.parent);
        if (facts.text != nullptr) {
            EXPECT_EQ(TextOf(control), facts.text);
        }
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
        const DWORD wanted = facts.style | WS_CHILD | WS_VISIBLE;
        EXPECT_EQ(style & wanted, wanted) << std::hex << style;
        if (facts.ownStyle != kAnyStyle) {
            EXPECT_EQ(LOWORD(style), facts.ownStyle);
        }
        const auto extended = GetWindowLongPtrW(control, GWL_EXSTYLE);
        EXPECT_EQ((extended & WS_EX_CLIENTEDGE) != 0, facts.clientEdge);
        EXPECT_EQ(IsWindowEnabled(control) != FALSE, facts.enabled);
    }
}

TEST_F(ControlsTest, TheMainWindowIsAnOverlappedWindowWithATitleAndAMenu) {
    const HWND window = app_->window();
    EXPECT_EQ(TextOf(window), L"Tavrin");
    EXPECT_EQ(ClassOf(window), L"TAVRIN");
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    EXPECT_EQ(style & WS_OVERLAPPEDWINDOW, static_cast<DWORD>(WS_OVERLAPPEDWINDOW));
    // Transparent labels need their parent's background painted under them.
    EXPECT_EQ(style & WS_CLIPCHILDREN, 0u);
    EXPECT_EQ(GetParent(window), nullptr);
    const auto classStyle = GetClassLongPtrW(window, GCL_STYLE);
    EXPECT_EQ(classStyle & (CS_HREDRAW | CS_VREDRAW),
              static_cast<ULONG_PTR>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_NE(GetMenu(window), nullptr);
}

TEST_F(ControlsTest, TheToolbarsControlsAreInPlace) {
    const struct {
        const char* name;
        ControlField control;
        RECT place;
    } kPlaces[] = {
        {"filter edit", &C::filterEdit, {5, 0, 225, 21}},
        {"From label", &C::fromLabel, {260, 0, 290, 20}},
        {"From picker", &C::fromPicker, {292, 0, 472, 20}},
        {"To label", &C::toLabel, {482, 0, 502, 20}},
        {"To picker", &C::toPicker, {504, 0, 684, 20}},
    };
    for (const auto& expected : kPlaces) {
        const RECT found = RectIn(Controls().toolbar, Controls().*expected.control);
        EXPECT_TRUE(EqualRect(&found, &expected.place))
            << expected.name << ": " << found.left << ", " << found.top << ", " << found.right
            << ", " << found.bottom;
    }
    EXPECT_EQ(SendMessageW(Controls().toolbar, TB_BUTTONCOUNT, 0, 0), 0);
}

TEST_F(ControlsTest, TheEventListsColumnsHaveTheirTitlesAndAreLeftAligned) {
    const std::wstring kTitles[] = {L"Level",    L"Date Time",  L"Source",
                                    L"Event ID", L"Process ID", L"Record ID"};
    const std::vector<ColumnFacts> columns = app_->list().Columns();
    ASSERT_EQ(columns.size(), std::size(kTitles));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].title, kTitles[i]);
        EXPECT_EQ(columns[i].format, LVCFMT_LEFT);
    }
}

TEST_F(ControlsTest, TheListsHaveTheirExtendedStyles) {
    EXPECT_EQ(SendMessageW(Controls().list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0),
              LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    EXPECT_EQ(SendMessageW(Controls().sourcesList, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0),
              LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    EXPECT_EQ(app_->sources().Columns().size(), 1u);
}

TEST_F(ControlsTest, TheListsAndTheTreeHaveImages) {
    EXPECT_NE(SendMessageW(Controls().list, LVM_GETIMAGELIST, LVSIL_SMALL, 0), 0);
    EXPECT_NE(SendMessageW(Controls().tree, TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
}

TEST_F(ControlsTest, TheStatusBarHasTwoPartsAndNamesTheComputer) {
    EXPECT_NE(GetWindowLongPtrW(Controls().statusBar, GWL_STYLE) & SBARS_SIZEGRIP, 0);
    EXPECT_EQ(StatusEdges(app_->process().handle(), Controls().statusBar),
              (std::vector<int>{100, -1}));
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = L"";
    DWORD room = MAX_COMPUTERNAME_LENGTH + 1;
    GetComputerNameW(name, &room);
    EXPECT_EQ(StatusText(app_->process().handle(), Controls().statusBar, 0), name);
    EXPECT_EQ(app_->Status(), L"");
}

TEST_F(ControlsTest, TheTabIsCalledGeneral) {
    EXPECT_EQ(TabTitles(app_->process().handle(), Controls().tab),
              std::vector<std::wstring>{L"General"});
}

TEST_F(ControlsTest, ThePickersStartUnticked) {
    EXPECT_EQ(app_->From(), std::nullopt);
    EXPECT_EQ(app_->To(), std::nullopt);
}

TEST_F(ControlsTest, TheSourcesControlsLieOverTheirFrame) {
    // The siblings above the frame in the z-order.
    std::set<HWND> above;
    for (HWND window = GetWindow(Controls().sourcesFrame, GW_HWNDPREV); window != nullptr;
         window = GetWindow(window, GW_HWNDPREV)) {
        above.insert(window);
    }
    for (const ControlField control :
         {&C::sourcesCaption, &C::sourcesSearch, &C::sourcesList, &C::showAllSources}) {
        EXPECT_TRUE(above.contains(Controls().*control)) << TextOf(Controls().*control).c_str();
    }
}

TEST_F(ControlsTest, TheHeaderPaneIsLightGrey) {
    ASSERT_TRUE(BringToFront(app_->window()));
    RECT pane{};
    GetWindowRect(Controls().headerPane, &pane);
    const POINT corner{pane.left + 3, pane.top + 3};
    EXPECT_TRUE(WaitUntil([&] { return ColourAt(corner) == RGB(0xDC, 0xDC, 0xDC); }))
        << std::hex << ColourAt(corner);
}

}  // namespace
}  // namespace tavrin::test
