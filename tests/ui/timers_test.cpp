#include "ui/controls/timers.h"

#include <utility>
#include <vector>

#include <windows.h>

#include <gmock/gmock.h>

#include "support/import_patch.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

std::vector<std::pair<UINT_PTR, UINT>> g_started;

UINT_PTR WINAPI RecordTimer(HWND, UINT_PTR id, UINT milliseconds, TIMERPROC) {
    g_started.emplace_back(id, milliseconds);
    return id;
}

TEST(StartTimer, GivesEachTimerItsNumberAndPeriod) {
    const test::ImportPatch<decltype(SetTimer)> patch("SetTimer", RecordTimer);
    const MainWindow window(nullptr);

    for (const Timer timer :
         {Timer::Drain, Timer::FilterText, Timer::LiveCheck, Timer::FilterApply}) {
        StartTimer(window, timer);
    }

    using testing::Pair;
    EXPECT_THAT(g_started,
                testing::ElementsAre(Pair(1, 50), Pair(2, 200), Pair(3, 2000), Pair(4, 500)));
}

}  // namespace
}  // namespace tavrin::ui
