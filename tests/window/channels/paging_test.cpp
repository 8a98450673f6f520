#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr int kEvents = 25000;
// The loader pauses after the page in which it reaches 10,000 records.
constexpr int kFirstPause = 79 * 128;
// The window raises the limit to 10,000 beyond the loaded records.
constexpr int kSecondPause = kFirstPause + 79 * 128;

const std::vector<std::wstring> kLarge = {L"Applications and Service Logs", L"Large"};

// The load begins in a minimised window. Its list shows no row, so it does not raise the limit.
class Paging : public WindowTest {
protected:
    void SetUp() override {
        AppWindow& app = Start(Serving(logs_));
        ShowWindow(app.window(), SW_MINIMIZE);
        ASSERT_TRUE(WaitUntil([&] { return IsIconic(app.window()) != FALSE; }));
        ASSERT_TRUE(app.SelectPath(kLarge));
        ASSERT_TRUE(app.WaitForRows(kFirstPause));
    }

    bool StaysAt(int rows) {
        return HoldsFor(400ms, [&] { return app_->list().RowCount() == rows; });
    }

    void Restore() const {
        ShowWindow(app_->window(), SW_RESTORE);
        ASSERT_TRUE(BringToFront(app_->window()));
        ASSERT_TRUE(WaitUntil([&] { return ClientSize(app_->controls().list).cy > 100; }));
    }

    const Recording logs_{{{.name = L"Application"},
                           {.name = L"Large",
                            .attributes = L"events=\"25000\" providers=\"3\" "
                                          L"levels=\"2,3,4\""}}};
};

TEST_F(Paging, TheLoadPausesAfterTheFirstTenThousand) {
    EXPECT_TRUE(StaysAt(kFirstPause));
    EXPECT_TRUE(WaitUntil([&] { return app_->Total() == FormatCount(kEvents); }));
    EXPECT_EQ(app_->Loaded(), FormatCount(kFirstPause));
}

TEST_F(Paging, RowsWithinTwoThousandOfTheEndReadOn) {
    Restore();
    // Stays clear of the limit: a partly visible row below the last whole one counts too.
    app_->list().EnsureVisible(kFirstPause - 2005);
    EXPECT_TRUE(StaysAt(kFirstPause));
    app_->list().EnsureVisible(kFirstPause - 2000);
    EXPECT_TRUE(app_->WaitForRows(kSecondPause));
    EXPECT_TRUE(StaysAt(kSecondPause));
    app_->list().EnsureVisible(kSecondPause - 1);
    EXPECT_TRUE(app_->WaitForRows(kEvents));
}

TEST_F(Paging, RowsNearTheEndReadNothingWhileAFolderIsSelected) {
    Restore();
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    app_->list().EnsureVisible(kFirstPause - 1);
    EXPECT_TRUE(StaysAt(kFirstPause));
}

TEST_F(Paging, AFilterTextLiftsTheLimit) {
    Restore();
    app_->TypeFilter(L"zzz no such text");
    EXPECT_TRUE(app_->WaitForRows(0));
    app_->TypeFilter(L"");
    EXPECT_TRUE(app_->WaitForRows(kEvents));
}

TEST_F(Paging, ScrollingToTheEndReadsOn) {
    Restore();
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    for (int presses = 0; presses < 10 && app_->list().RowCount() < kEvents; ++presses) {
        const int before = app_->list().RowCount();
        PressKey(VK_END);
        EXPECT_TRUE(WaitUntil([&] {
            const int rows = app_->list().RowCount();
            return rows > before || rows == kEvents;
        }));
    }
    EXPECT_EQ(app_->list().RowCount(), kEvents);
    EXPECT_EQ(app_->list().Cell(kEvents - 1, 5), L"1") << "the oldest event is last";
    EXPECT_EQ(app_->list().Cell(0, 5), L"25000");
}

TEST_F(Paging, ARefreshStartsAtTheFirstPauseAgain) {
    Restore();
    app_->list().EnsureVisible(kFirstPause - 1);
    ASSERT_TRUE(app_->WaitForRows(kSecondPause));
    ShowWindow(app_->window(), SW_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(app_->window()) != FALSE; }));
    app_->Command(IDM_REFRESH);
    EXPECT_TRUE(app_->WaitForRows(kFirstPause));
    EXPECT_TRUE(StaysAt(kFirstPause));
}

}  // namespace
}  // namespace tavrin::test
