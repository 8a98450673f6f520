#pragma once

#include <chrono>
#include <mutex>
#include <thread>

#include <windows.h>

namespace tavrin::test {

// Asks a window's thread for an answer again and again, from a thread of its own, and keeps the
// longest time that one took: how long the window was frozen.
class AnswerMeter {
public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    explicit AnswerMeter(HWND window);

    // The longest time since the last call; waits for the answer that is pending.
    Milliseconds TakeLongest();

private:
    void Ask();
    unsigned Answers();

    const HWND window_;
    std::mutex mutex_;
    unsigned answers_ = 0;  // guarded by mutex_, as the next
    Milliseconds longest_{0};
    std::jthread thread_;
};

}  // namespace tavrin::test
