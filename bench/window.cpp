// Measures what a user waits for in the real program's window.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/bare_control.h"
#include "bench/logs.h"
#include "bench/samples.h"
#include "support/recording.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/app_window.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace test;

constexpr int kRuns = 5;
constexpr int kSelections = 25;
constexpr int kListedEvents = 1000;
constexpr int kFewEvents = 100;
constexpr int kHeldRows = 500;
constexpr double kDrainPeriodMs = 50;
constexpr DWORD kGlanceMs = 300;  // a user looks at a channel before selecting the next
constexpr double kRepeatMicroseconds = 1e6 / 30;
constexpr std::chrono::milliseconds kLongWait{120'000};

Recording OneChannel(const std::wstring& attributes) {
    return Recording({{.name = L"Bench", .attributes = attributes}});
}

std::wstring MessageOfRow(int row) {
    return L"The message of row " + std::to_wstring(row) + L".";
}

// Events with distinct messages. The newest is written last and is row 0.
std::vector<RecordedEvent> NumberedEvents() {
    std::vector<RecordedEvent> events = Events(kListedEvents);
    int row = kListedEvents;
    for (RecordedEvent& event : events) {
        event.message = MessageOfRow(--row);
    }
    return events;
}

// A text filter lifts the load limit. Every time contains a slash, so all rows match.
TEST(WindowBench, SelectingAMillionEventsAndTypingAText) {
    const Recording recording = OneChannel(Synthetic(kMillion));
    Samples seconds;
    for (int run = 0; run < kRuns; ++run) {
        AppWindow app(On(recording));
        ASSERT_TRUE(app.WaitForTree());
        const Stopwatch watch;
        ASSERT_TRUE(Select(app, L"Bench"));
        app.TypeFilter(L"/");
        ASSERT_TRUE(WaitUntil([&] { return app.Loaded() == FormatCount(kMillion); }, kLongWait));
        seconds.Add(watch.Microseconds() / 1e6);
        app.PostClose();
        EXPECT_TRUE(HasEndedCleanly(app));
    }
    PrintHeadline("the window, a channel of 1,000,000 events");
    seconds.Print("from selecting it, a text typed at once, to all rows", "s");
}

bool HasPaintedRows(AppWindow& app, int rows) {
    return app.list().RowCount() == rows &&
           GetUpdateRect(app.list().window(), nullptr, FALSE) == FALSE;
}

std::wstring SmallChannel(int number) {
    return L"Small" + std::to_wstring(number);
}

// Each channel has one event more than the previous one, so its row count identifies it.
std::vector<RecordedChannel> SmallChannels() {
    std::vector<RecordedChannel> channels;
    for (int i = 0; i < kSelections; ++i) {
        channels.push_back({.name = SmallChannel(i), .attributes = Synthetic(kFewEvents + i)});
    }
    return channels;
}

// The first timer tick drains the list. The time beyond one period is the program's own.
TEST(WindowBench, SelectingAChannelToItsFirstRows) {
    const Recording recording(SmallChannels());
    AppWindow app(On(recording));
    ASSERT_TRUE(app.WaitForTree());
    const BareList bareList(kFewEvents, SizeOf(app.controls().list));
    Samples milliseconds;
    Samples bare;
    for (int run = 0; run < kSelections; ++run) {
        Sleep(kGlanceMs);
        bareList.Settle();
        const Stopwatch bareWatch;
        bareList.SetRows(kFewEvents + run);
        UpdateWindow(bareList.Handle());
        bare.Add(bareWatch.Milliseconds());
        const HTREEITEM item = app.tree().Find(PathOf(SmallChannel(run)));
        ASSERT_NE(item, nullptr);
        const Stopwatch watch;
        app.tree().Select(item);
        while (!HasPaintedRows(app, kFewEvents + run)) {
            ASSERT_LT(watch.Seconds(), 10);
            Sleep(1);  // polling without a pause would distort the measurement
        }
        milliseconds.Add(watch.Milliseconds() - kDrainPeriodMs);
    }
    PrintHeadline("selecting a channel");
    milliseconds.Print("first rows of a channel painted, beyond the tick of 50 ms", "ms");
    bare.Print("    the bare list taking and painting them", "ms");
    EXPECT_TRUE(ClosesCleanly(app));
}

// Sends 30 key repeats per second, as a held key does. The time from the last repeat to the last
// update is the lag that a user sees.
void HoldDownKey() {
    const Stopwatch watch;
    for (int row = 1; row <= kHeldRows; ++row) {
        while (watch.Microseconds() < row * kRepeatMicroseconds) {
            Sleep(1);
        }
        PressKey(VK_DOWN);
    }
}

TEST(WindowBench, HoldingTheDownKey) {
    const Recording recording = OneChannel(L"");
    recording.WriteEvents(L"Bench", NumberedEvents());
    AppWindow app(On(recording));
    ASSERT_TRUE(app.WaitForTree());
    ASSERT_TRUE(Select(app, L"Bench"));
    ASSERT_TRUE(app.WaitForRows(kListedEvents));
    Samples lag;
    for (int run = 0; run < kRuns; ++run) {
        app.list().Select(0);
        app.list().EnsureVisible(0);
        ASSERT_TRUE(BringToFront(app.window()) && GiveFocus(app.controls().list));
        HoldDownKey();
        const Stopwatch watch;
        ASSERT_TRUE(WaitUntil([&] { return app.Details() == MessageOfRow(kHeldRows); }));
        lag.Add(watch.Microseconds() / 1000);
    }
    PrintHeadline("holding the down key for 500 rows");
    lag.Print("from the last repeat to the last row's text", "ms");
    app.PostClose();
    EXPECT_TRUE(HasEndedCleanly(app));
}

}  // namespace
}  // namespace tavrin::bench
