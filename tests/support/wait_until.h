#pragma once

#include <chrono>
#include <thread>

namespace tavrin::test {

// Long enough for a busy machine; a condition that holds ends the wait at once.
inline constexpr std::chrono::milliseconds kPatience{20'000};

inline constexpr std::chrono::milliseconds kPollPeriod{5};

// Waits until the condition holds. False when the time is up.
template <typename Condition>
bool WaitUntil(Condition holds, std::chrono::milliseconds patience = kPatience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(kPollPeriod);
    }
    return true;
}

// Watches a condition for the whole time, to see that something does not happen. Can miss a fault
// on a slow machine, but never reports one that is not there.
template <typename Condition>
bool HoldsFor(std::chrono::milliseconds time, Condition holds) {
    return !WaitUntil([&] { return !holds(); }, time);
}

}  // namespace tavrin::test
