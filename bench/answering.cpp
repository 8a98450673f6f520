// Measures for how long the window is unresponsive while it works, with one message per
// millisecond.

#include <chrono>
#include <cstdio>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/logs.h"
#include "bench/samples.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/answer_meter.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace test;

constexpr int kRuns = 5;
constexpr int kPages = 60;
constexpr int kPageKeys = 5;
constexpr std::chrono::milliseconds kLongWait{120'000};

// The program with one channel of a million events and one of a single event.
class MillionRows {
public:
    MillionRows() : app_(On(WithOneOther(recording_))) {}

    AppWindow& App() { return app_; }

    bool WaitForMillion() {
        return WaitUntil([&] { return app_.Loaded() == FormatCount(kMillion); }, kLongWait);
    }

    // A text filter lifts the load limit. Every time contains a slash, so all rows match.
    bool Load() {
        if (!Select(app_, L"Bench")) {
            return false;
        }
        app_.TypeFilter(L"/");
        return WaitForMillion();
    }

    // Scrolls with the scroll bar, which selects nothing.
    bool Scroll() {
        for (int page = 0; page < kPages; ++page) {
            const WPARAM way = page % 10 != 0 ? SB_PAGEDOWN : page % 20 == 0 ? SB_BOTTOM : SB_TOP;
            SendMessageW(app_.controls().list, WM_VSCROLL, way, 0);
            SendMessageW(app_.controls().list, WM_NULL, 0, 0);
        }
        return true;
    }

    bool PressPageKeys() {
        for (int page = 0; page < kPageKeys; ++page) {
            SendMessageW(app_.controls().list, WM_KEYDOWN, VK_NEXT, 0);
        }
        app_.list().Unselect();
        return true;
    }

    bool Filter() {
        app_.TypeFilter(L"7");
        WaitUntil([&] { return app_.Loaded() != FormatCount(kMillion); }, kLongWait);
        app_.TypeFilter(L"no such text");
        app_.WaitForRows(0);
        app_.TypeFilter(L"/");
        return WaitForMillion();
    }

    bool Refresh() {
        PressKey(VK_F5);
        return WaitUntil([&] { return app_.Loaded() != FormatCount(kMillion); }, kLongWait) &&
               WaitForMillion();
    }

    bool SwitchAway() { return Select(app_, L"Other") && app_.WaitForRows(1); }

    bool SwitchBack() { return Select(app_, L"Bench") && WaitForMillion(); }

    // Returns the longest time in milliseconds without an answer during `act`.
    double Longest(bool (MillionRows::*act)()) {
        AnswerMeter meter(app_.window());
        EXPECT_TRUE((this->*act)());
        return meter.TakeLongest().count();
    }

private:
    static const Recording& WithOneOther(const Recording& recording) {
        recording.WriteEvents(L"Other", Events(1));
        return recording;
    }

    const Recording recording_{
        {{.name = L"Bench", .attributes = Synthetic(kMillion)}, {.name = L"Other"}}};
    AppWindow app_;
};

TEST(AnsweringBench, AMillionRows) {
    struct Act {
        const char* what;
        bool (MillionRows::*act)();
        Samples longest{};
    } acts[] = {{"scrolling by pages and to both ends", &MillionRows::Scroll},
                {"page keys, each of which selects a row", &MillionRows::PressPageKeys},
                {"filtering by three texts", &MillionRows::Filter},
                {"F5, to the last record", &MillionRows::Refresh},
                {"selecting another channel", &MillionRows::SwitchAway},
                {"selecting it again, all records in one tick", &MillionRows::SwitchBack}};
    MillionRows window;
    ASSERT_TRUE(window.App().WaitForTree() && BringToFront(window.App().window()));
    const double loading = window.Longest(&MillionRows::Load);
    for (int run = 0; run < kRuns; ++run) {
        for (Act& act : acts) {
            act.longest.Add(window.Longest(act.act));
        }
    }
    PrintHeadline("the window with 1,000,000 rows: longest time without answer");
    std::printf("%-58s %10.2f\n", "the first load", loading);
    for (const Act& act : acts) {
        act.longest.Print(act.what, "ms");
    }
    EXPECT_TRUE(ClosesCleanly(window.App()));
}

}  // namespace
}  // namespace tavrin::bench
