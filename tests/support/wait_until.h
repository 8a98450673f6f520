#pragma once

#include <chrono>
#include <thread>

namespace tavrin::test {

// Waits until a condition holds that other threads bring about. False when it does not
// within the time that the slowest machine needs.
template <typename Condition>
bool WaitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// Whether a condition holds the whole time that a thread would need to break it. Can
// miss a fault on a slow machine, but never reports one that is not there.
template <typename Condition>
bool StaysTrue(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(50);
    while (std::chrono::steady_clock::now() < end) {
        if (!condition()) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace tavrin::test
