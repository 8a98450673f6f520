#pragma once

#include <cstddef>

#include <gtest/gtest.h>

#include "endurance/process_resources.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// What the program holds at rest.
struct Holdings {
    ProcessResources resources;
    std::size_t privateBytes = 0;
};

// Also prints it.
Holdings HoldingsOf(const AppWindow& app);

// The run-time library makes an event for a lock when two threads first want it at a time, and
// keeps it: one for each of a channel's two locks.
inline constexpr unsigned kLocksOfAChannel = 2;

// The thread object of the last record counter stays until the next one starts.
inline constexpr unsigned kLastCounter = 1;

// Whether the program comes to hold what it held before, apart from what may be made once at its
// first use, however long it runs.
testing::AssertionResult HoldsNoMoreThan(const AppWindow& app, const Holdings& before,
                                         const ProcessResources& firstUse);

}  // namespace tavrin::test
