#pragma once

#include <chrono>
#include <thread>

namespace tavrin::test {

// Long enough for a busy machine. A wait ends as soon as its condition holds.
inline constexpr std::chrono::milliseconds kPatience{20'000};

inline constexpr std::chrono::milliseconds kPollPeriod{5};

// Waits until the condition holds. Returns false at the timeout.
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

// Watches a condition for the whole time, to check that something does not happen. On a slow
// machine it may miss a fault, but it never reports a false one.
template <typename Condition>
bool HoldsFor(std::chrono::milliseconds time, Condition holds) {
    return !WaitUntil([&] { return !holds(); }, time);
}

}  // namespace tavrin::test
