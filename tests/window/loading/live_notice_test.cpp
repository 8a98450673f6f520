#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/expected/expected_texts.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// The check runs every two seconds; the service sees a new event well within half a one.
constexpr auto kOneCheck = 2600ms;
constexpr WPARAM kLiveCheckTimer = 3;

class LiveNotice : public WindowTest {
protected:
    void StartWatching(const std::wstring& script = L"") {
        logs_.WriteEvents(L"Application", Events(3, {.provider = L"Watched"}));
        logs_.WriteEvents(L"System", Events(2));
        Start(Serving(logs_, script));
        ASSERT_TRUE(app_->SelectPath(kApplication));
    }

    bool NoticeComes() const {
        return WaitUntil([&] { return app_->Status() == kNewEventsNotice; }, kOneCheck);
    }

    // Whatever the window's timer would see until the service has surely read the event.
    bool NoNoticeComes() const {
        return HoldsFor(600ms, [&] {
            SendMessageW(app_->window(), WM_TIMER, kLiveCheckTimer, 0);
            return app_->Status() != kNewEventsNotice;
        });
    }

    void AppendEvent(std::uint64_t recordId, const std::wstring& provider = L"Watched") const {
        logs_.AppendEvent(L"Application", {.recordId = recordId, .provider = provider});
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(LiveNotice, ComesWithinOneCheckAndGoesWithARefresh) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->Status(), L"");
    AppendEvent(4);
    EXPECT_TRUE(NoticeComes());
    EXPECT_EQ(app_->list().RowCount(), 3) << "the list is not touched";
    ASSERT_TRUE(BringToFront(app_->window()));
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(VK_F5);
    EXPECT_TRUE(app_->WaitForRows(4));
    EXPECT_EQ(app_->list().Cell(0, 5), L"4");
    EXPECT_TRUE(NoNoticeComes()) << "until the next event";
    AppendEvent(5);
    EXPECT_TRUE(NoticeComes());
}

TEST_F(LiveNotice, IsWrittenAgainWhileTheEventsAreUnread) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    AppendEvent(4);
    ASSERT_TRUE(NoticeComes());
    RemoteMemory empty(app_->process().handle(), sizeof(wchar_t));
    SendMessageW(app_->controls().statusBar, SB_SETTEXTW, 1, empty.At<LPARAM>(0));
    EXPECT_EQ(app_->Status(), L"");
    EXPECT_TRUE(NoticeComes());
}

TEST_F(LiveNotice, IsOfTheChannelThatIsShown) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    ASSERT_TRUE(app_->WaitForRows(2));
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeComes()) << "it is another channel's";
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(app_->WaitForStatus(kNewEventsNotice)) << "the former channel was still watched";
    EXPECT_TRUE(app_->WaitForRows(3));
}

TEST_F(LiveNotice, DoesNotComeForAnEventThatTheQueryExcludes) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 1; }));
    app_->sources().SetChecked(0, true);
    ASSERT_TRUE(WaitUntil([&] { return app_->TotalCaption() == L" In log: "; }));
    ASSERT_TRUE(app_->WaitForRows(3));
    AppendEvent(4, L"Another");
    EXPECT_TRUE(NoNoticeComes());
    AppendEvent(5);
    EXPECT_TRUE(NoticeComes());
}

TEST_F(LiveNotice, DoesNotComeForAChannelWhoseLoadFailed) {
    StartWatching(FailCall(L"EvtQuery", 15007, L"Application"));
    ASSERT_TRUE(WaitUntil([&] { return app_->Status().starts_with(L"Failed to load"); }));
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeComes());
}

TEST_F(LiveNotice, DoesNotComeWithoutASubscription) {
    StartWatching(FailCall(L"EvtSubscribe", 50));
    EXPECT_TRUE(app_->WaitForRows(3)) << "the load goes on all the same";
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeComes());
}

}  // namespace
}  // namespace tavrin::test
