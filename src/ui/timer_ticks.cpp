#include "ui/timer_ticks.h"

#include <algorithm>
#include <iterator>

#include "ui/actions/apply_filters.h"
#include "ui/actions/drain.h"
#include "ui/actions/new_events.h"
#include "ui/controls/timers.h"

namespace tavrin::ui {
namespace {

struct Tick {
    Timer timer;
    void (*run)(MainWindow&);
};

constexpr Tick kTicks[] = {
    {Timer::Drain, DrainRecords},
    {Timer::FilterText, ApplyTextFilter},
    {Timer::LiveCheck, ShowNewEventsNotice},
    {Timer::FilterApply, ApplyFiltersNow},
};

}  // namespace

void OnTimer(MainWindow& window, UINT_PTR id) {
    const auto tick = std::ranges::find(kTicks, static_cast<Timer>(id), &Tick::timer);
    if (tick != std::end(kTicks)) {
        tick->run(window);
    }
}

}  // namespace tavrin::ui
