#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/expected/expected_texts.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/thread_refusal.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

class LoadFailure : public WindowTest {
protected:
    // Waits until the status bar and the details show a failure of the Application log.
    void ExpectFailure(const std::wstring& message, unsigned code) {
        EXPECT_TRUE(app_->WaitForStatus(message)) << app_->Status();
        const std::wstring details =
            message + L"\r\n\r\nLog: Application\r\nError code: " + std::to_wstring(code);
        EXPECT_TRUE(WaitUntil([&] { return app_->Details() == details; }, 1000ms))
            << app_->Details();
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(LoadFailure, ACodeWithoutASystemTextIsAnUnknownError) {
    Start(Serving(logs_, FailCall(L"EvtSeek", 4000000001, L"Application")));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ExpectFailure(L"Failed to load Application: Unknown error. (error 4000000001)", 4000000001);
}

TEST_F(LoadFailure, AChannelThatRefusesAccessSaysSo) {
    AppWindow& app = Start();
    ASSERT_TRUE(app.SelectPath({L"Applications and Service Logs", L"Harbor", L"Vault", L"Audit"}));
    const std::wstring message =
        L"Failed to load Harbor-Vault/Audit: Access denied. Run as administrator to view this log.";
    EXPECT_TRUE(app.WaitForStatus(message));
    EXPECT_TRUE(WaitUntil([&] {
        return app.Details() == message + L"\r\n\r\nLog: Harbor-Vault/Audit\r\nError code: 5";
    }));
    EXPECT_EQ(app.Loaded(), L"0");
    EXPECT_EQ(app.Total(), L"0");
}

TEST_F(LoadFailure, APartlyFailedLoadKeepsItsRowsAndSaysHowMany) {
    logs_.WriteEvents(L"Application", Events(2000));
    // The subscription makes the first call of EvtNext, so nine pages precede the eleventh.
    Start(Serving(logs_, FailCall(L"EvtNext", 15011, L"Application", 11)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ExpectFailure(L"Loading stopped after " + FormatCount(9 * 128) +
                      L" events: The log changed while it was being read (it may have been "
                      L"cleared). Reselect it to reload.",
                  15011);
    EXPECT_EQ(app_->list().RowCount(), 9 * 128);
    EXPECT_EQ(app_->Loaded(), FormatCount(9 * 128));
    EXPECT_EQ(app_->list().Cell(9 * 128 - 1, 5), std::to_wstring(2000 - 9 * 128 + 1));
}

TEST_F(LoadFailure, ARefreshAfterAPartlyFailedLoadReadsEveryEventOnce) {
    logs_.WriteEvents(L"Application", Events(2000));
    Start(Serving(logs_, FailCall(L"EvtNext", 15011, L"Application", 4)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForRows(256));
    app_->Command(IDM_REFRESH);
    EXPECT_TRUE(app_->WaitForRows(2000));
    EXPECT_TRUE(HoldsFor(300ms, [&] { return app_->list().RowCount() == 2000; }));
    EXPECT_EQ(app_->Status(), L"");
    EXPECT_EQ(app_->Details(), L"");
    EXPECT_EQ(app_->list().Cell(0, 5), L"2000");
    EXPECT_EQ(app_->list().Cell(1999, 5), L"1");
}

TEST_F(LoadFailure, SelectingAgainAfterAPartlyFailedLoadReadsEveryEventOnce) {
    logs_.WriteEvents(L"Application", Events(2000));
    Start(Serving(logs_, FailCall(L"EvtNext", 15011, L"Application", 4)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForRows(256));
    ASSERT_TRUE(WaitUntil(
        [&] { return app_->Status().starts_with(L"Loading stopped after 256 events: "); }));
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(app_->WaitForRows(2000));
    EXPECT_TRUE(HoldsFor(300ms, [&] { return app_->list().RowCount() == 2000; }));
    EXPECT_EQ(app_->list().Cell(1999, 5), L"1");
    EXPECT_EQ(app_->Status(), L"");
}

TEST_F(LoadFailure, WithoutAThreadTheChannelCannotBeLoadedUntilItIsRefreshed) {
    logs_.WriteEvents(L"Application", Events(300));
    const std::wstring failure =
        L"Failed to load Application: " + SystemErrorText(ERROR_MAX_THRDS_REACHED);
    Start(Serving(logs_));
    {
        const ThreadRefusal refusal(app_->process());
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ExpectFailure(failure, ERROR_MAX_THRDS_REACHED);
    }
    app_->Command(IDM_REFRESH);
    EXPECT_TRUE(app_->WaitForRows(300));
    EXPECT_TRUE(app_->WaitForStatus(L""));

    const ThreadRefusal refusal(app_->process());
    app_->Command(IDM_REFRESH);
    ExpectFailure(failure, ERROR_MAX_THRDS_REACHED);
    EXPECT_EQ(app_->list().RowCount(), 0) << "no row of the load before";
}

TEST_F(LoadFailure, SelectingAgainAfterALoadThatFailedAtOnceReadsTheLog) {
    logs_.WriteEvents(L"Application", Events(300));
    Start(Serving(logs_, FailCall(L"EvtQuery", 1722, L"Application", 1)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForStatus(L"Failed to load Application: " + SystemErrorText(1722)));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_EQ(app_->Status(), L"") << "the start of a load clears the message";
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(app_->WaitForRows(300));
    EXPECT_EQ(app_->Status(), L"");
}

TEST_F(LoadFailure, AFailureInTheBackgroundIsShownWithItsRowsAtTheNextSelection) {
    logs_.WriteEvents(L"Application", Events(1000));
    const Gate gate;
    Start(Serving(logs_, gate.Block(L"EvtNext", 4, L"Application") +
                             FailCall(L"EvtNext", 15011, L"Application", 4)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(gate.WaitForCall());
    ASSERT_TRUE(app_->SelectPath(kSystem));
    gate.Open();
    ASSERT_TRUE(app_->WaitForRows(0));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ExpectFailure(
        L"Loading stopped after 256 events: The log changed while it was being read (it "
        L"may have been cleared). Reselect it to reload.",
        15011);
    EXPECT_EQ(app_->list().RowCount(), 256);
}

TEST_F(LoadFailure, WhateverServiceCallFailsNoHandleStaysOpen) {
    constexpr int kEvents = 300;
    logs_.WriteEvents(L"Application", Events(kEvents));
    const struct {
        const wchar_t* function;
        bool failsTheLoad;
        int rows;
    } kCalls[] = {
        {L"EvtQuery", true, 0},
        {L"EvtSeek", true, 0},
        {L"EvtNext", true, 0},
        {L"EvtCreateRenderContext", false, 0},
        {L"EvtRender", false, kEvents},
        {L"EvtOpenLog", false, kEvents},
        {L"EvtGetLogInfo", false, kEvents},
        {L"EvtSubscribe", false, kEvents},
        {L"EvtCreateBookmark", false, kEvents},
        {L"EvtOpenPublisherMetadata", false, kEvents},
        {L"EvtFormatMessage", false, kEvents},
    };
    const std::wstring failure = L"Failed to load Application: " + SystemErrorText(1722);
    for (const auto& call : kCalls) {
        SCOPED_TRACE(call.function);
        AppOptions options = Serving(logs_, FailCall(call.function, 1722));
        options.recordCalls = true;
        Start(options);
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(call.rows));
        app_->list().Select(0);
        EXPECT_TRUE(
            WaitUntil([&] { return app_->process().CallCounts().contains(call.function); }));
        EXPECT_TRUE(app_->WaitForStatus(call.failsTheLoad ? failure : L"")) << app_->Status();
        EXPECT_TRUE(ClosesCleanly(*app_));
    }
}

}  // namespace
}  // namespace tavrin::test
