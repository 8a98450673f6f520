#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "resource.h"
#include "support/wait_until.h"
#include "window/harness/environment.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr unsigned kUsualCloses = 3;
// How long closing may take, in ms, after the pending service call has returned. Generous, for a
// busy machine.
constexpr unsigned kUsualMargin = 2000;
constexpr int kLargeEvents = 200'000;

const std::vector<std::wstring> kLarge = {L"Applications and Service Logs", L"Large"};

// What the program does when it is closed: how each operation is prepared and started.
class ClosingAnyTime : public WindowTest {
public:
    void Nothing() {}

    void WaitForItsTree() { ASSERT_TRUE(app_->WaitForTree()); }

    void LoadApplication() {
        WaitForItsTree();
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(kEvents));
    }

    void LoadToThePause() {
        WaitForItsTree();
        ASSERT_TRUE(app_->SelectPath(kLarge));
        ASSERT_TRUE(WaitUntil([&] { return app_->list().RowCount() >= 10'000; }));
    }

    void LoadAllOfLarge() {
        WaitForItsTree();
        ASSERT_TRUE(app_->SelectPath(kLarge));
        SetFilter(L"synthetic");
        ASSERT_TRUE(WaitUntil([&] { return app_->list().RowCount() == kLargeEvents; }, 60s));
    }

    void SelectApplication() { PostSelection(kApplication); }
    void SelectLarge() { PostSelection(kLarge); }
    void Refresh() { app_->Command(IDM_REFRESH); }
    void SelectAnEvent() { PostMessageW(app_->list().window(), WM_KEYDOWN, VK_HOME, 0); }

    void Filter() {
        SetFilter(L"no such text");
        PostMessageW(app_->window(), WM_TIMER, static_cast<WPARAM>(Timer::FilterText), 0);
    }

    void AppendAnEvent() {
        logs_.AppendEvent(L"Application", {.recordId = kEvents + 1});
        PostMessageW(app_->window(), WM_TIMER, static_cast<WPARAM>(Timer::LiveCheck), 0);
    }

protected:
    static constexpr int kEvents = 300;

    void SetFilter(const wchar_t* text) {
        SendMessageW(app_->controls().filterEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }

    // Does not wait for the program's reaction.
    void PostSelection(const std::vector<std::wstring>& path) {
        PostMessageW(app_->tree().window(), TVM_SELECTITEM, TVGN_CARET,
                     reinterpret_cast<LPARAM>(app_->tree().Find(path)));
    }

    const Recording logs_{{{.name = L"Application"},
                           {.name = L"Large", .attributes = L"events=\"200000\""},
                           {.name = L"A-B/1", .publisher = L"A-B"},
                           {.name = L"A-B/2", .publisher = L"A-B"},
                           {.name = L"A-C/1", .publisher = L"A-C"},
                           {.name = L"A-C/2", .publisher = L"A-C"}}};
};

struct Operation {
    const char* name;
    const wchar_t* script;
    milliseconds call;  // the longest service call that closing may have to wait for
    milliseconds span;  // the time after `start` in which the program is closed
    void (ClosingAnyTime::*prepare)();
    void (ClosingAnyTime::*start)();
};

void PrintTo(const Operation& operation, std::ostream* out) {
    *out << operation.name;
}

const Operation kOperations[] = {
    // Closing does not stop the tree's worker, which reads all channels.
    {"BuildingTheTree", L"delay EvtOpenChannelConfig ms=50", 300ms, 400ms, &ClosingAnyTime::Nothing,
     &ClosingAnyTime::Nothing},
    {"OpeningAQuery", L"delay EvtQuery ms=300", 300ms, 450ms, &ClosingAnyTime::WaitForItsTree,
     &ClosingAnyTime::SelectApplication},
    // The first call is the window's check for pending events.
    {"WatchingAChannel", L"delay EvtNext ms=300 call=1", 300ms, 450ms,
     &ClosingAnyTime::WaitForItsTree, &ClosingAnyTime::SelectApplication},
    {"LoadingInSlowCalls", L"delay EvtNext ms=300 from=2", 300ms, 1300ms,
     &ClosingAnyTime::WaitForItsTree, &ClosingAnyTime::SelectApplication},
    {"LoadingAtAPace", L"pace EvtNext call-us=2000 event-us=10\npace EvtRender call-us=20", 10ms,
     900ms, &ClosingAnyTime::WaitForItsTree, &ClosingAnyTime::SelectLarge},
    {"Counting", L"delay EvtGetLogInfo ms=300", 300ms, 450ms, &ClosingAnyTime::WaitForItsTree,
     &ClosingAnyTime::SelectApplication},
    {"ThePauseOfALoad", L"", 0ms, 300ms, &ClosingAnyTime::LoadToThePause, &ClosingAnyTime::Nothing},
    // The window checks for pending events, then closing waits for the loader's call.
    {"ARefresh", L"delay EvtNext ms=50", 100ms, 400ms, &ClosingAnyTime::LoadApplication,
     &ClosingAnyTime::Refresh},
    {"Filtering", L"", 0ms, 300ms, &ClosingAnyTime::LoadAllOfLarge, &ClosingAnyTime::Filter},
    {"AMessageText", L"delay EvtFormatMessage ms=100", 200ms, 350ms,
     &ClosingAnyTime::LoadApplication, &ClosingAnyTime::SelectAnEvent},
    {"LiveNotices", L"", 0ms, 600ms, &ClosingAnyTime::LoadApplication,
     &ClosingAnyTime::AppendAnEvent},
};

class ClosingDuring : public ClosingAnyTime, public testing::WithParamInterface<Operation> {
protected:
    // Closes the program at a moment after the operation's start. Returns how long it took to end.
    milliseconds Close(milliseconds moment) {
        const Operation& operation = GetParam();
        logs_.WriteEvents(L"Application", Events(kEvents));
        StartOnly(Serving(logs_, operation.script));
        (this->*operation.prepare)();
        (this->*operation.start)();
        std::this_thread::sleep_for(moment);
        const Clock::time_point before = Clock::now();
        app_->PostClose();
        EXPECT_TRUE(app_->process().WaitForEnd(kPatience).ended);
        const auto took = std::chrono::duration_cast<milliseconds>(Clock::now() - before);
        EXPECT_TRUE(HasEndedCleanly(*app_));
        return took;
    }
};

void Report(const Operation& operation, std::vector<milliseconds> times, milliseconds limit) {
    std::ranges::sort(times);
    std::printf(
        "%s: %zu closes, ms: median %lld, nine of ten %lld, longest %lld; limit %lld\n",
        operation.name, times.size(), static_cast<long long>(times[times.size() / 2].count()),
        static_cast<long long>(times[times.size() * 9 / 10].count()),
        static_cast<long long>(times.back().count()), static_cast<long long>(limit.count()));
    std::fflush(stdout);
}

TEST_P(ClosingDuring, EndsAfterTheCurrentCallAndLeavesNothingOpen) {
    const Operation& operation = GetParam();
    const unsigned seed = NumberFromEnvironment(L"TAVRIN_CLOSE_SEED", std::random_device{}());
    const unsigned closes = NumberFromEnvironment(L"TAVRIN_CLOSES", kUsualCloses);
    const milliseconds limit =
        operation.call + milliseconds(NumberFromEnvironment(L"TAVRIN_CLOSE_MARGIN", kUsualMargin));
    std::printf("TAVRIN_CLOSE_SEED=%u\n", seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> within(0.0, 1.0);
    std::vector<milliseconds> times;
    for (unsigned round = 0; round < closes; ++round) {
        // The closes are spread over the span: one at a random moment of each equal part.
        const double part = (round + within(random)) / closes;
        const auto moment = std::chrono::duration_cast<milliseconds>(operation.span * part);
        SCOPED_TRACE("closed after " + std::to_string(moment.count()) + " ms");
        times.push_back(Close(moment));
        EXPECT_LE(times.back(), limit);
        if (HasFatalFailure()) {
            break;
        }
    }
    Report(operation, std::move(times), limit);
}

INSTANTIATE_TEST_SUITE_P(EveryOperation, ClosingDuring, testing::ValuesIn(kOperations),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace tavrin::test
