#include <cstdio>
#include <string>

#include "endurance/holdings.h"
#include "resource.h"
#include "support/private_bytes.h"
#include "support/wait_until.h"
#include "window/harness/environment.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

constexpr unsigned kUsualCycles = 40;
constexpr unsigned kWarmUpCycles = 20;
constexpr std::size_t kMemoryMargin = 2 * 1024 * 1024;

// Repeats one action many times. Neither memory nor handles may accumulate.
class Cycles : public WindowTest {
protected:
    static constexpr unsigned kChannels = 2;
    static constexpr int kEvents = 300;

    void SetUp() override {
        logs_.WriteEvents(L"Application", EventsWithMessages(kEvents));
        logs_.WriteEvents(L"System", Events(40));
        Start(Serving(logs_));
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(Shows(kEvents));
    }

    // Waits until the list shows the channel that has this many events.
    bool Shows(int events) {
        return WaitUntil([&] {
            return app_->Total() == std::to_wstring(events) && app_->list().RowCount() == events &&
                   app_->list().Cell(events - 1, 5) == L"1";
        });
    }

    template <typename Cycle>
    void Repeat(Cycle cycle) {
        const unsigned cycles = NumberFromEnvironment(L"TAVRIN_CYCLES", kUsualCycles);
        Holdings before;
        for (unsigned round = 0; round < kWarmUpCycles + cycles; ++round) {
            if (round == kWarmUpCycles) {
                before = HoldingsOf(*app_);
            }
            ASSERT_TRUE(cycle(static_cast<int>(round))) << round;
        }
        EXPECT_TRUE(HoldsNoMoreThan(
            *app_, before, {.kernelHandles = kChannels * kLockHandlesOfAChannel + kLastCounter}));
        EXPECT_LE(PrivateBytes(app_->process().handle()), before.privateBytes + kMemoryMargin);
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(Cycles, SelectingAChannelLeaksNothing) {
    Repeat([&](int) {
        return app_->SelectPath(kSystem) && Shows(40) && app_->SelectPath(kApplication) &&
               Shows(kEvents);
    });
}

TEST_F(Cycles, RefreshingLeaksNothing) {
    Repeat([&](int) {
        SendMessageW(app_->window(), WM_COMMAND, IDM_REFRESH, 0);
        return Shows(kEvents);
    });
}

TEST_F(Cycles, ShowingAnEventLeaksNothing) {
    Repeat([&](int round) {
        const int row = round % kEvents;
        app_->list().Select(row);
        return WaitUntil(
            [&] { return app_->Details() == L"Message " + std::to_wstring(kEvents - row); });
    });
}

TEST_F(Cycles, ResizingLeaksNothing) {
    Repeat(
        [&](int round) { return app_->ResizeClient(760 + round % 7 * 50, 500 + round % 5 * 60); });
}

}  // namespace
}  // namespace tavrin::test
