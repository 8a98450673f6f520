// Measures how long a user waits after changing a filter or the channel during a slow read: the
// service scans two million events for a filter that none matches, which takes 20 s per page.

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/logs.h"
#include "bench/samples.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_driver.h"
#include "window/harness/answer_meter.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace test;

constexpr int kRuns = 5;
constexpr int kEvents = 2'000'000;
constexpr wchar_t kSlowFilter[] = L"scan skip-us=10 channel=Bench";

// A new read is certainly in progress after this time.
constexpr DWORD kIntoTheRead = 500;

class SlowRead {
public:
    SlowRead() : app_(Options()), driver_(app_) {
        EXPECT_TRUE(app_.WaitForTree() && BringToFront(app_.window()));
        EXPECT_TRUE(Select(app_, L"Bench") && WaitForRows());
        EXPECT_TRUE(WaitUntil([&] { return app_.sources().RowCount() > 0; }));
    }

    AppWindow& App() { return app_; }

    // The From bound is the current second, and every event of the channel is older.
    void BeginSlowRead() { AskAnew(&SlowRead::ClickFrom); }

    void BeginSlowReadOfASource() {
        BeginSlowRead();
        AskAnew(&SlowRead::ClickSource);
    }

    bool Refresh() { return AskAnew(&SlowRead::PressF5); }
    bool TickASource() { return AskAnew(&SlowRead::ClickSource); }
    bool ShowAllSources() { return AskAnew(&SlowRead::ClickShowAll); }
    bool ClearTheRange() {
        ClickFrom();
        return WaitForRows();
    }
    bool SelectAnother() { return Select(app_, L"Other") && app_.WaitForRows(1); }

    // Returns to the channel without filters.
    void StartOver() {
        Select(app_, L"Other");
        app_.WaitForRows(1);
        Select(app_, L"Bench");
        if (driver_.TimeOf(app_.controls().fromPicker)) {
            ClickFrom();
        }
        driver_.ClickShowAll();
        EXPECT_TRUE(WaitForRows());
    }

private:
    static AppOptions Options() {
        static const Recording recording{
            {{.name = L"Bench", .attributes = Synthetic(kEvents)}, {.name = L"Other"}}};
        recording.WriteEvents(L"Other", {{.time = L"2099-03-05T07:09:03.0000000Z"}});
        AppOptions options = On(recording);
        options.script = kSlowFilter;
        options.recordCalls = true;
        return options;
    }

    bool WaitForRows() {
        return WaitUntil([&] { return app_.list().RowCount() > 1; });
    }

    void PressF5() { PressKey(VK_F5); }
    void ClickFrom() { driver_.ClickPickerBox(app_.controls().fromPicker); }
    void ClickSource() { driver_.ClickSource(0); }
    void ClickShowAll() { driver_.ClickShowAll(); }

    bool AskAnew(void (SlowRead::*act)()) {
        const std::size_t before = driver_.Queries(L"Bench").size();
        (this->*act)();
        return WaitUntil([&] { return driver_.Queries(L"Bench").size() > before; });
    }

    AppWindow app_;
    FilterDriver driver_;
};

struct Act {
    const char* what;
    void (SlowRead::*begin)();
    bool (SlowRead::*act)();
};

constexpr Act kActs[] = {
    {"F5, to the new query", &SlowRead::BeginSlowRead, &SlowRead::Refresh},
    {"a ticked source, to the new query", &SlowRead::BeginSlowRead, &SlowRead::TickASource},
    {"Show all sources, to the new query", &SlowRead::BeginSlowReadOfASource,
     &SlowRead::ShowAllSources},
    {"the range cleared, to its rows", &SlowRead::BeginSlowRead, &SlowRead::ClearTheRange},
    {"another channel, to its rows", &SlowRead::BeginSlowRead, &SlowRead::SelectAnother},
};

TEST(SlowReadsBench, TwoMillionEventsWithoutAMatch) {
    std::array<Samples, std::size(kActs)> frozen;
    std::array<Samples, std::size(kActs)> until;
    Samples closing;
    for (int run = 0; run < kRuns; ++run) {
        SlowRead window;
        for (std::size_t i = 0; i < std::size(kActs); ++i) {
            (window.*kActs[i].begin)();
            Sleep(kIntoTheRead);
            AnswerMeter meter(window.App().window());
            const Stopwatch watch;
            EXPECT_TRUE((window.*kActs[i].act)()) << kActs[i].what;
            until[i].Add(watch.Milliseconds());
            frozen[i].Add(meter.TakeLongest().count());
            window.StartOver();
        }
        window.BeginSlowRead();
        Sleep(kIntoTheRead);
        const Stopwatch watch;
        EXPECT_TRUE(ClosesCleanly(window.App()));
        closing.Add(watch.Milliseconds());
    }
    PrintHeadline("during a read of 20 s: longest time without answer");
    for (std::size_t i = 0; i < std::size(kActs); ++i) {
        frozen[i].Print(kActs[i].what, "ms");
    }
    closing.Print("closing, to the end of the process", "ms");
    PrintHeadline("during a read of 20 s: from the act on");
    for (std::size_t i = 0; i < std::size(kActs); ++i) {
        until[i].Print(kActs[i].what, "ms");
    }
}

}  // namespace
}  // namespace tavrin::bench
