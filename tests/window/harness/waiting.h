#pragma once

#include <chrono>

#include <windows.h>

namespace tavrin::test {

// Long enough for a busy machine; a condition that holds ends the wait at once.
inline constexpr std::chrono::milliseconds kPatience{15000};

inline constexpr DWORD kPollPeriodMs = 5;

// Waits until the condition holds. False when the time is up.
template <typename Condition>
bool WaitUntil(Condition holds, std::chrono::milliseconds patience = kPatience) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(patience.count());
    while (!holds()) {
        if (GetTickCount64() >= end) {
            return false;
        }
        Sleep(kPollPeriodMs);
    }
    return true;
}

// Watches a condition for the whole time, to see that something does not happen.
template <typename Condition>
bool HoldsFor(std::chrono::milliseconds time, Condition holds) {
    return !WaitUntil([&] { return !holds(); }, time);
}

}  // namespace tavrin::test
