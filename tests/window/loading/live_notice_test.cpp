#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/expected/expected_texts.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// The program checks every two seconds. The rest is for the service and a busy machine.
constexpr auto kOneCheck = 2600ms;

class LiveNotice : public WindowTest {
protected:
    void StartWatching(const std::wstring& script = L"") {
        logs_.WriteEvents(L"Application", Events(3, {.provider = L"Watched"}));
        logs_.WriteEvents(L"System", Events(2));
        Start(Serving(logs_, script));
        ASSERT_TRUE(app_->SelectPath(kApplication));
    }

    bool NoticeAppears() const {
        return WaitUntil([&] { return app_->Status() == kNewEventsNotice; }, kOneCheck);
    }

    // Runs the window's check repeatedly until the service has certainly seen the event.
    bool NoNoticeAppears() const {
        return HoldsFor(600ms, [&] {
            app_->Expire(Timer::LiveCheck);
            return app_->Status() != kNewEventsNotice;
        });
    }

    void AppendEvent(std::uint64_t recordId, const std::wstring& provider = L"Watched") const {
        logs_.AppendEvent(L"Application", {.recordId = recordId, .provider = provider});
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(LiveNotice, AppearsWithinOneCheckAndDisappearsWithARefresh) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    EXPECT_TRUE(WaitUntil([&] { return app_->Total() == L"3"; }));
    EXPECT_EQ(app_->Status(), L"");
    AppendEvent(4);
    EXPECT_TRUE(NoticeAppears());
    EXPECT_EQ(app_->list().RowCount(), 3) << "the list does not change";
    ASSERT_TRUE(BringToFront(app_->window()));
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(VK_F5);
    EXPECT_TRUE(app_->WaitForRows(4));
    EXPECT_EQ(app_->list().Cell(0, 5), L"4");
    EXPECT_TRUE(WaitUntil([&] { return app_->Total() == L"4"; }));
    EXPECT_TRUE(NoNoticeAppears()) << "until the next event";
    AppendEvent(5);
    EXPECT_TRUE(NoticeAppears());
}

TEST_F(LiveNotice, IsWrittenAgainWhileTheEventsAreUnread) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    AppendEvent(4);
    ASSERT_TRUE(NoticeAppears());
    RemoteMemory empty(app_->process().handle(), sizeof(wchar_t));
    SendMessageW(app_->controls().statusBar, SB_SETTEXTW, 1, empty.At<LPARAM>(0));
    EXPECT_EQ(app_->Status(), L"");
    EXPECT_TRUE(NoticeAppears());
}

TEST_F(LiveNotice, ConcernsOnlyTheShownChannel) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    ASSERT_TRUE(app_->WaitForRows(2));
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeAppears()) << "the event belongs to another channel";
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(app_->WaitForStatus(kNewEventsNotice)) << "the former channel was still watched";
    EXPECT_TRUE(app_->WaitForRows(3));
}

TEST_F(LiveNotice, DoesNotAppearForAnEventThatTheQueryExcludes) {
    StartWatching();
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 1; }));
    app_->sources().SetChecked(0, true);
    ASSERT_TRUE(WaitUntil([&] { return app_->TotalCaption() == L" In log: "; }));
    ASSERT_TRUE(app_->WaitForRows(3));
    AppendEvent(4, L"Another");
    EXPECT_TRUE(NoNoticeAppears());
    AppendEvent(5);
    EXPECT_TRUE(NoticeAppears());
}

TEST_F(LiveNotice, DoesNotAppearForAChannelWhoseLoadFailed) {
    StartWatching(FailCall(L"EvtQuery", 15007, L"Application"));
    ASSERT_TRUE(WaitUntil([&] { return app_->Status().starts_with(L"Failed to load"); }));
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeAppears());
}

TEST_F(LiveNotice, DoesNotAppearWithoutASubscription) {
    StartWatching(FailCall(L"EvtSubscribe", 50));
    EXPECT_TRUE(app_->WaitForRows(3)) << "the load does not need the subscription";
    AppendEvent(4);
    EXPECT_TRUE(NoNoticeAppears());
}

}  // namespace
}  // namespace tavrin::test
