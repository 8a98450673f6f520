#include <chrono>

#include "base/utf8.h"
#include "resource.h"
#include "support/wait_until.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

const std::vector<std::wstring> kLarge = {L"Applications and Service Logs", L"Large"};
const std::vector<std::wstring> kLarger = {L"Applications and Service Logs", L"Larger"};

constexpr std::chrono::seconds kPrompt{1};

// Closes the window during a service call. The program must end promptly after the call returns.
class Closing : public WindowTest {
protected:
    Closing() { logs_.WriteEvents(L"Application", Events(3000)); }

    AppWindow& StartWithGateAt(const std::wstring& function, unsigned call,
                               const std::wstring& channel = L"") {
        return StartOnly(Serving(logs_, gate_.Block(function, call, channel)));
    }

    void ExpectPromptEnd() {
        ASSERT_TRUE(gate_.WaitForCall());
        app_->PostClose();
        ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(app_->window()); }));
        gate_.Open();
        EXPECT_TRUE(HasEndedCleanly(*app_, kPrompt));
    }

    const Recording logs_{{{.name = L"Application"},
                           {.name = L"Large", .attributes = L"events=\"25000\""},
                           {.name = L"Larger", .attributes = L"events=\"1000000\""}}};
    const Gate gate_;
};

TEST_F(Closing, WhileTheTreeIsBuiltEndsPromptly) {
    StartWithGateAt(L"EvtNextChannelPath", 3);
    ExpectPromptEnd();
}

TEST_F(Closing, WhileAChannelsConfigurationIsReadEndsPromptly) {
    StartWithGateAt(L"EvtOpenChannelConfig", 2);
    ExpectPromptEnd();
}

TEST_F(Closing, WhileAWorkerIsInACallEndsPromptly) {
    const struct {
        const wchar_t* function;
        unsigned call;
    } kCalls[] = {
        {L"EvtOpenLog", 1}, {L"EvtGetLogInfo", 1}, {L"EvtQuery", 1},  {L"EvtSeek", 1},
        {L"EvtNext", 2},    {L"EvtNext", 5},       {L"EvtRender", 1}, {L"EvtRender", 300},
    };
    for (const auto& call : kCalls) {
        SCOPED_TRACE(base::ToUtf8(call.function) + " " + std::to_string(call.call));
        const Gate gate;
        AppWindow& app =
            Start(Serving(logs_, gate.Block(call.function, call.call, L"Application")));
        ASSERT_TRUE(app.SelectPath(kApplication));
        ASSERT_TRUE(gate.WaitForCall());
        app.PostClose();
        ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(app.window()); }));
        gate.Open();
        EXPECT_TRUE(HasEndedCleanly(app, kPrompt));
    }
}

TEST_F(Closing, WhileAPausedLoadWaitsEndsPromptly) {
    AppWindow& app = Start(Serving(logs_));
    ASSERT_TRUE(app.SelectPath(kLarge));
    ASSERT_TRUE(WaitUntil([&] { return app.list().RowCount() >= 10000; }));
    EXPECT_TRUE(ClosesCleanly(app, kPrompt));
}

TEST_F(Closing, WhileSeveralChannelsLoadEndsPromptly) {
    AppWindow& app = Start(Serving(logs_));
    ASSERT_TRUE(app.SelectPath(kLarger));
    app.TypeFilter(L"no record has this");
    app.Expire(Timer::FilterText);  // lifts the limit of the load
    ASSERT_TRUE(app.SelectPath(kLarge));
    ASSERT_TRUE(app.SelectPath(kApplication));
    EXPECT_TRUE(ClosesCleanly(app, kPrompt));
}

TEST_F(Closing, RightAfterASelectionEndsPromptly) {
    AppWindow& app = Start(Serving(logs_));
    ASSERT_TRUE(app.SelectPath(kApplication));
    EXPECT_TRUE(ClosesCleanly(app, kPrompt));
}

TEST_F(Closing, RightAfterTheWindowAppearsEndsPromptly) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(ClosesCleanly(StartOnly({}), kPrompt));
    }
}

TEST_F(Closing, ByTheExitCommandEndsPromptly) {
    AppWindow& app = Start(Serving(logs_));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(3000));
    app.list().Select(2);
    app.Command(IDM_EXIT);
    EXPECT_TRUE(HasEndedCleanly(app, kPrompt));
}

}  // namespace
}  // namespace tavrin::test
