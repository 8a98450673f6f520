#include "ui/timers.h"

#include <algorithm>
#include <iterator>

#include "ui/drain.h"
#include "ui/filter_bar.h"
#include "ui/main_window.h"
#include "ui/status_bar.h"

namespace tavrin::ui {
namespace {

void OnLiveCheckTimer(MainWindow& window) {
    ShowNewEventsNotice(window);
}

struct TimerEntry {
    Timer timer;
    UINT periodMs;
    void (*onTick)(MainWindow&);
};

constexpr TimerEntry kTimers[] = {
    {Timer::Drain, 50, OnDrainTimer},
    {Timer::FilterText, 200, OnFilterTextTimer},
    {Timer::LiveCheck, 2000, OnLiveCheckTimer},
    {Timer::FilterApply, 500, OnFilterApplyTimer},
};

UINT_PTR Id(Timer timer) {
    return static_cast<UINT_PTR>(timer);
}

}  // namespace

void StartTimer(const MainWindow& window, Timer timer) {
    const TimerEntry& entry = *std::ranges::find(kTimers, timer, &TimerEntry::timer);
    SetTimer(window.handle, Id(timer), entry.periodMs, nullptr);
}

bool StopTimer(const MainWindow& window, Timer timer) {
    return KillTimer(window.handle, Id(timer)) != FALSE;
}

void StopAllTimers(const MainWindow& window) {
    for (const TimerEntry& entry : kTimers) {
        StopTimer(window, entry.timer);
    }
}

void OnTimer(MainWindow& window, UINT_PTR id) {
    const auto entry = std::ranges::find(kTimers, static_cast<Timer>(id), &TimerEntry::timer);
    if (entry != std::end(kTimers)) {
        entry->onTick(window);
    }
}

}  // namespace tavrin::ui
