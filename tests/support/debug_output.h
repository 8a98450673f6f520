#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <windows.h>

#include "eventlog/service/evt_handle.h"

namespace tavrin::test {

// A debug monitor: receives the debugger output of all processes of the session while it
// exists. Only one monitor can listen at a time.
class DebugOutput {
public:
    // Throws std::runtime_error if another monitor is listening.
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // Returns what a process has written so far, in order, one entry per call. A text keeps
    // its line feeds. Windows cuts it after 4,091 bytes and converts it to the ANSI code page.
    std::vector<std::wstring> Lines(DWORD processId) const;

    // Waits until a process has written an entry that contains the text. Skips the first
    // `from` entries of the process. Returns false at the timeout.
    bool WaitFor(DWORD processId, std::wstring_view text, std::chrono::milliseconds timeout,
                 std::size_t from = 0) const;

private:
    struct Entry {
        DWORD processId;
        std::wstring text;
    };

    void Listen();
    void Take();
    // The caller holds mutex_.
    bool Contains(DWORD processId, std::wstring_view text, std::size_t from) const;

    eventlog::UniqueKernelHandle buffer_;
    eventlog::UniqueKernelHandle bufferReady_;
    eventlog::UniqueKernelHandle dataReady_;
    eventlog::UniqueKernelHandle stop_;
    const void* view_ = nullptr;

    mutable std::mutex mutex_;
    mutable std::condition_variable arrived_;
    std::vector<Entry> entries_;  // guarded by mutex_

    std::thread listener_;
};

}  // namespace tavrin::test
