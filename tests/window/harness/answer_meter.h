#pragma once

#include <chrono>
#include <mutex>
#include <thread>

#include <windows.h>

namespace tavrin::test {

// Measures how long a window is frozen: a background thread sends it messages all the time and
// keeps the longest time without an answer.
class AnswerMeter {
public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    explicit AnswerMeter(HWND window);

    // Waits for the pending answer. Returns the longest time since the last call.
    Milliseconds TakeLongest();

private:
    void Ask();
    unsigned Answers();

    const HWND window_;
    std::mutex mutex_;
    unsigned answers_ = 0;     // guarded by mutex_
    Milliseconds longest_{0};  // guarded by mutex_
    std::jthread thread_;
};

}  // namespace tavrin::test
