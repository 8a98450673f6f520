#include "ui/controls/timers.h"

#include <algorithm>

#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

struct Period {
    Timer timer;
    UINT milliseconds;
};

constexpr Period kPeriods[] = {
    {Timer::Drain, 50},
    {Timer::FilterText, 200},
    {Timer::LiveCheck, 2000},
    {Timer::FilterApply, 500},
};

UINT_PTR Id(Timer timer) {
    return static_cast<UINT_PTR>(timer);
}

}  // namespace

void StartTimer(const MainWindow& window, Timer timer) {
    const Period& period = *std::ranges::find(kPeriods, timer, &Period::timer);
    SetTimer(window.handle, Id(timer), period.milliseconds, nullptr);
}

bool StopTimer(const MainWindow& window, Timer timer) {
    return KillTimer(window.handle, Id(timer)) != FALSE;
}

void StopAllTimers(const MainWindow& window) {
    for (const Period& period : kPeriods) {
        StopTimer(window, period.timer);
    }
}

}  // namespace tavrin::ui
