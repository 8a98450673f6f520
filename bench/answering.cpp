// Measures for how long the window is unresponsive while it works, with one message per
// millisecond.

#include <array>
#include <chrono>
#include <cstdio>
#include <future>
#include <initializer_list>
#include <iterator>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/bare_control.h"
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
// The program shows a growing number of rows in steps of this length.
constexpr DWORD kBetweenCountsMs = 200;

// With the scroll bar, which selects nothing.
void ScrollByPages(HWND list) {
    for (int page = 0; page < kPages; ++page) {
        const WPARAM way = page % 10 != 0 ? SB_PAGEDOWN : page % 20 == 0 ? SB_BOTTOM : SB_TOP;
        SendMessageW(list, WM_VSCROLL, way, 0);
        SendMessageW(list, WM_NULL, 0, 0);
    }
}

void PressPageKeys(HWND list) {
    for (int page = 0; page < kPageKeys; ++page) {
        SendMessageW(list, WM_KEYDOWN, VK_NEXT, 0);
    }
}

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

    // Scrolls with the scroll bar, which does not change the selection.
    bool Scroll() {
        ScrollByPages(app_.controls().list);
        return true;
    }

    bool PressPageKeys() {
        bench::PressPageKeys(app_.controls().list);
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

// A bare list on a thread of its own, which does what the program's list has to do for each action.
class BareListThread {
public:
    explicit BareListThread(SIZE size)
        : thread_([this, size] {
              const BareList list(kMillion, size);
              list_.set_value(list.Handle());
              MSG message;
              while (GetMessageW(&message, nullptr, 0, 0) > 0) {
                  DispatchMessageW(&message);
              }
          }),
          handle_(list_.get_future().get()) {}
    ~BareListThread() {
        PostThreadMessageW(GetWindowThreadProcessId(handle_, nullptr), WM_QUIT, 0, 0);
        thread_.join();
    }
    BareListThread(const BareListThread&) = delete;
    BareListThread& operator=(const BareListThread&) = delete;

    void Scroll() const { ScrollByPages(handle_); }

    void PressPageKeys() const {
        bench::PressPageKeys(handle_);
        ListView_SetItemState(handle_, -1, 0, LVIS_SELECTED);
    }

    void Filter() const { ShowRows({kMillion / 5, 0, kMillion}); }
    void Refresh() const { ShowRows({0, kMillion / 4, kMillion / 2, kMillion / 4 * 3, kMillion}); }
    void SwitchAway() const { ShowRows({1}); }
    void SwitchBack() const { ShowRows({kMillion}); }

    // The longest time without answer during the action.
    double Longest(void (BareListThread::*act)() const) const {
        AnswerMeter meter(handle_);
        (this->*act)();
        return meter.TakeLongest().count();
    }

private:
    void ShowRows(std::initializer_list<int> counts) const {
        for (const int count : counts) {
            ListView_SetItemCountEx(handle_, count, LVSICF_NOSCROLL);
            Sleep(kBetweenCountsMs);
        }
    }

    std::promise<HWND> list_;
    std::thread thread_;
    HWND handle_;
};

TEST(AnsweringBench, AMillionRows) {
    const struct {
        const char* what;
        bool (MillionRows::*act)();
        void (BareListThread::*bare)() const;
    } kActs[] = {
        {"scrolling by pages and to both ends", &MillionRows::Scroll, &BareListThread::Scroll},
        {"page keys, each of which selects a row", &MillionRows::PressPageKeys,
         &BareListThread::PressPageKeys},
        {"filtering by three texts", &MillionRows::Filter, &BareListThread::Filter},
        {"F5, to the last record", &MillionRows::Refresh, &BareListThread::Refresh},
        {"selecting another channel", &MillionRows::SwitchAway, &BareListThread::SwitchAway},
        {"selecting it again, all records in one tick", &MillionRows::SwitchBack,
         &BareListThread::SwitchBack},
    };
    MillionRows window;
    const BareListThread bareList(SizeOf(window.App().controls().list));
    ASSERT_TRUE(window.App().WaitForTree() && BringToFront(window.App().window()));
    const double loading = window.Longest(&MillionRows::Load);
    std::array<Samples, std::size(kActs)> longest;
    std::array<Samples, std::size(kActs)> bare;
    for (int run = 0; run < kRuns; ++run) {
        for (std::size_t i = 0; i < longest.size(); ++i) {
            longest[i].Add(window.Longest(kActs[i].act));
            bare[i].Add(bareList.Longest(kActs[i].bare));
        }
    }
    PrintHeadline("the window with 1,000,000 rows: longest time without answer");
    std::printf("%-58s %10.2f\n", "the first load", loading);
    for (std::size_t i = 0; i < longest.size(); ++i) {
        longest[i].Print(kActs[i].what, "ms");
        bare[i].Print("    the bare list", "ms");
    }
    EXPECT_TRUE(ClosesCleanly(window.App()));
}

}  // namespace
}  // namespace tavrin::bench
