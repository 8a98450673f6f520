#include <cstdint>

#include "window/controls/input.h"
#include "window/controls/top_windows.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

class ContextMenu : public WindowTest {
protected:
    void SetUp() override {
        logs_.WriteEvents(L"Application", Events(events_));
        Start(Serving(logs_));
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(static_cast<int>(events_)));
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    HWND WaitForMenu() const { return WaitForTopWindow(app_->process().id(), kPopupMenuClass); }

    void CloseMenu() const {
        PressKey(VK_ESCAPE);
        EXPECT_TRUE(WaitForNoTopWindow(app_->process().id(), kPopupMenuClass));
    }

    // Input is handled in order, and a menu would keep the key to itself.
    void ExpectNoMenuBeforeF5(const char* where) {
        ++events_;
        logs_.AppendEvent(L"Application", {.recordId = events_});
        PressKey(VK_F5);
        EXPECT_TRUE(app_->WaitForRows(static_cast<int>(events_))) << where;
        EXPECT_EQ(FindTopWindow(app_->process().id(), kPopupMenuClass), nullptr) << where;
    }

    POINT OnRow(int row) {
        RECT cell = app_->list().RowRect(row, LVIR_BOUNDS);
        cell.right = cell.left + 100;
        return CentreOf(cell);
    }

    const Recording logs_{kSomeChannels};
    std::uint64_t events_ = 5;
};

TEST_F(ContextMenu, OpensAtTheMouseOverTheEventList) {
    const POINT point = OnRow(2);
    ClickRight(point);
    const HWND menu = WaitForMenu();
    ASSERT_NE(menu, nullptr);
    RECT rect{};
    GetWindowRect(menu, &rect);
    EXPECT_NEAR(rect.left, point.x, 4);
    EXPECT_NEAR(rect.top, point.y, 4);
    CloseMenu();
}

TEST_F(ContextMenu, OpensByTheMenuKey) {
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(VK_APPS);
    EXPECT_NE(WaitForMenu(), nullptr);
    CloseMenu();
}

TEST_F(ContextMenu, OpensOverNoOtherControl) {
    const struct {
        const char* name;
        HWND control;
    } kOthers[] = {
        {"tree", app_->controls().tree},
        {"header pane", app_->controls().headerPane},
        {"status bar", app_->controls().statusBar},
        {"sources list", app_->controls().sourcesList},
    };
    for (const auto& other : kOthers) {
        RECT rect{};
        GetWindowRect(other.control, &rect);
        ClickRight({rect.left + 30, rect.top + 8});
        ExpectNoMenuBeforeF5(other.name);
    }
}

TEST_F(ContextMenu, DoesNotOpenForTheListsHeader) {
    // Posts the message that the header's right click produces under Windows. Wine passes the
    // list's handle instead of the header's.
    const POINT point = CentreOf(app_->controls().list);
    PostMessageW(app_->window(), WM_CONTEXTMENU,
                 reinterpret_cast<WPARAM>(app_->controls().listHeader),
                 MAKELPARAM(point.x, point.y));
    ExpectNoMenuBeforeF5("the list's header");
}

TEST_F(ContextMenu, RefreshReadsTheChannelAgain) {
    logs_.AppendEvent(L"Application", {.recordId = 6});
    ClickRight(OnRow(0));
    ASSERT_NE(WaitForMenu(), nullptr);
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    EXPECT_TRUE(app_->WaitForRows(6));
    EXPECT_EQ(app_->list().Cell(0, 5), L"6");
}

}  // namespace
}  // namespace tavrin::test
