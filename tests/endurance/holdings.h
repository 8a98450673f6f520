#pragma once

#include <cstddef>

#include <gtest/gtest.h>

#include "endurance/process_resources.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// Makes the service log what Holdings counts; AppOptions::recordCalls has to be set too.
inline constexpr wchar_t kLogCounters[] = L"log EvtOpenLog\n";

// What the program holds at rest.
struct Holdings {
    ProcessResources resources;
    std::size_t privateBytes = 0;
    // Threads that have counted records. Each one's thread object, a kernel handle, is kept to the
    // end of the program, where all are joined.
    std::size_t counters = 0;
};

// Also prints it.
Holdings HoldingsOf(const AppWindow& app);

// The run-time library makes an event for a lock when two threads first want it at a time, and
// keeps it: one for each of a channel's two locks.
inline constexpr unsigned kLocksOfAChannel = 2;

// Whether the program comes to hold what it held before, a kernel handle more for each thread that
// has counted records since, and what may be made once at its first use, however long it runs.
testing::AssertionResult HoldsNoMoreThan(const AppWindow& app, const Holdings& before,
                                         const ProcessResources& firstUse);

}  // namespace tavrin::test
