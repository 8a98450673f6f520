#pragma once

#include <cstddef>

#include <gtest/gtest.h>

#include "endurance/process_resources.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// The resources of the idle program.
struct Holdings {
    ProcessResources resources;
    std::size_t privateBytes = 0;
};

// Reads the holdings and prints them.
Holdings HoldingsOf(const AppWindow& app);

// The run-time library creates an event for a mutex at the first contention and two semaphores for
// a condition variable at the first wait, and keeps them. Each channel has two mutexes and a
// condition variable, the record disposer one of each.
inline constexpr unsigned kLockHandlesOfAChannel = 4;
inline constexpr unsigned kLockHandlesOfTheDisposer = 3;

// The handle of the last record counter's thread is kept until the next counter starts.
inline constexpr unsigned kLastCounter = 1;

// Waits until the program holds no more than before. Allows `firstUse`: what Windows may create
// once, at a first use.
testing::AssertionResult HoldsNoMoreThan(const AppWindow& app, const Holdings& before,
                                         const ProcessResources& firstUse);

}  // namespace tavrin::test
