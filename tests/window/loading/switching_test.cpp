#include "resource.h"
#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// With the gate, the load of the Application log stops after three pages.
class Switching : public WindowTest {
protected:
    void SetUp() override {
        logs_.WriteEvents(L"Application", Events(1000, {.provider = L"First"}));
        logs_.WriteEvents(L"System", Events(40, {.provider = L"Second"}, 5001));
    }

    // The subscription makes the first call of EvtNext, so three pages precede the fifth.
    static constexpr unsigned kFourthPage = 5;
    static constexpr int kThreePages = 3 * 128;

    const Recording logs_{kSomeChannels};
    const Gate gate_;
};

TEST_F(Switching, NoRecordOfTheFormerChannelAppears) {
    AppWindow& app = Start(Serving(logs_, gate_.Block(L"EvtNext", kFourthPage, L"Application")));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(kThreePages));
    ASSERT_TRUE(app.SelectPath(kSystem));
    gate_.Open();
    ASSERT_TRUE(app.WaitForRows(40));
    EXPECT_TRUE(HoldsFor(400ms, [&] { return app.list().RowCount() == 40; }));
    for (int row = 0; row < 40; ++row) {
        EXPECT_EQ(app.list().Cell(row, 2), L"Second");
    }
    EXPECT_EQ(app.NodeName(), L"System");
}

TEST_F(Switching, AFormerChannelsCountChangesNothing) {
    AppWindow& app = Start(Serving(logs_, gate_.Block(L"EvtGetLogInfo", 1, L"Application")));
    const DebugOutput output;
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(gate_.WaitForCall());
    EXPECT_EQ(app.Total(), L"0") << "until the count arrives";
    ASSERT_TRUE(app.SelectPath(kSystem));
    ASSERT_TRUE(WaitUntil([&] { return app.Total() == L"40"; }));
    gate_.Open();
    ASSERT_TRUE(output.WaitFor(app.process().id(),
                               L"Got Node Record Count completion from Event Log API Wrapper: 1000",
                               kPatience));
    app.Synchronise();
    EXPECT_EQ(app.Total(), L"40");
    ASSERT_TRUE(app.SelectPath(kApplication));
    EXPECT_EQ(app.Total(), FormatCount(1000)) << "the channel keeps its count";
}

TEST_F(Switching, AFolderStopsTheDrainAndKeepsTheRows) {
    AppWindow& app = Start(Serving(logs_, gate_.Block(L"EvtNext", kFourthPage, L"Application")));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(kThreePages));
    ASSERT_TRUE(app.SelectPath(kWindowsLogs));
    gate_.Open();
    EXPECT_TRUE(HoldsFor(400ms, [&] { return app.list().RowCount() == kThreePages; }));
    ASSERT_TRUE(app.SelectPath(kApplication));
    EXPECT_TRUE(app.WaitForRows(1000)) << "the loader continued in the background";
}

TEST_F(Switching, ComingBackWhileTheLoaderRunsStartsNoSecondOne) {
    AppOptions options = Serving(logs_, gate_.Block(L"EvtNext", kFourthPage, L"Application"));
    options.recordCalls = true;
    AppWindow& app = Start(options);
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(kThreePages));
    ASSERT_TRUE(app.SelectPath(kSystem));
    ASSERT_TRUE(app.WaitForRows(40));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(kThreePages));
    gate_.Open();
    EXPECT_TRUE(app.WaitForRows(1000));
    EXPECT_EQ(app.process().CallCounts()[L"EvtQuery"], 2u) << "one per channel";
}

TEST_F(Switching, RapidSwitchesEndWithTheLastChannel) {
    AppWindow& app = Start(Serving(logs_, DelayCall(L"EvtNext", 5ms)));
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(app.SelectPath(kApplication));
        ASSERT_TRUE(app.SelectPath(kWindowsLogs));
        ASSERT_TRUE(app.SelectPath(kSystem));
    }
    // Waits for a row: the counts may still be those of an earlier round.
    EXPECT_TRUE(WaitUntil([&] { return app.list().Cell(0, 5) == L"5040"; }));
    EXPECT_EQ(app.list().RowCount(), 40);
    EXPECT_EQ(app.Loaded(), L"40");
    EXPECT_TRUE(WaitUntil([&] { return app.Total() == L"40"; }));
}

TEST_F(Switching, ARefreshWhileLoadingReadsEveryEventOnce) {
    AppWindow& app = Start(Serving(logs_, gate_.Block(L"EvtNext", kFourthPage, L"Application")));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(kThreePages));
    app.Command(IDM_REFRESH);
    gate_.Open();  // the refresh waits for the current step of the first load
    EXPECT_TRUE(app.WaitForRows(1000));
    EXPECT_TRUE(HoldsFor(300ms, [&] { return app.list().RowCount() == 1000; }));
}

}  // namespace
}  // namespace tavrin::test
