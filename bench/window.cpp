// What a user waits for, measured on the real program's window.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

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
constexpr DWORD kGlanceMs = 300;  // a user looks at a channel before going to another
constexpr double kRepeatMicroseconds = 1e6 / 30;
constexpr std::chrono::milliseconds kLongWait{120'000};

Recording OneChannel(const std::wstring& attributes) {
    return Recording({{.name = L"Bench", .attributes = attributes}});
}

std::wstring MessageOfRow(int row) {
    return L"The message of row " + std::to_wstring(row) + L".";
}

// Each with a message of its own; the newest, written last, is row 0.
std::vector<RecordedEvent> NumberedEvents() {
    std::vector<RecordedEvent> events = Events(kListedEvents);
    int row = kListedEvents;
    for (RecordedEvent& event : events) {
        event.message = MessageOfRow(--row);
    }
    return events;
}

// A text lifts the limit; each time has a slash, so that every row is shown at the end.
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

// Each has a row more than the one before, so that its rows are known from the other's.
std::vector<RecordedChannel> SmallChannels() {
    std::vector<RecordedChannel> channels;
    for (int i = 0; i < kSelections; ++i) {
        channels.push_back({.name = SmallChannel(i), .attributes = Synthetic(kFewEvents + i)});
    }
    return channels;
}

// The list is drained on the first tick of the timer; what comes on top is the program's.
TEST(WindowBench, SelectingAChannelToItsFirstRows) {
    const Recording recording(SmallChannels());
    AppWindow app(On(recording));
    ASSERT_TRUE(app.WaitForTree());
    Samples milliseconds;
    for (int run = 0; run < kSelections; ++run) {
        Sleep(kGlanceMs);
        const Stopwatch watch;
        ASSERT_TRUE(Select(app, SmallChannel(run)));
        while (!HasPaintedRows(app, kFewEvents + run)) {
            ASSERT_LT(watch.Seconds(), 10);
            Sleep(1);  // asking without a pause would take the time that is measured
        }
        milliseconds.Add(watch.Milliseconds() - kDrainPeriodMs);
    }
    PrintHeadline("selecting a channel");
    milliseconds.Print("to its first rows painted, beyond the tick of 50 ms", "ms");
    EXPECT_TRUE(ClosesCleanly(app));
}

// The key repeats 30 times a second, as a held one does. What is left to do after the
// last repeat is what a user would see lagging behind.
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
