#pragma once

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The main window's timers; the numbers are their identifiers.
enum class Timer : UINT_PTR { Drain = 1, FilterText = 2, LiveCheck = 3, FilterApply = 4 };

// Starts a timer with its period. Restarts a running one.
void StartTimer(const MainWindow& window, Timer timer);

// Stops a timer. Returns whether it was running.
bool StopTimer(const MainWindow& window, Timer timer);

void StopAllTimers(const MainWindow& window);

}  // namespace tavrin::ui
