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

// Listens to the debugger output of all processes of the session for as long as it
// lives, as a debug monitor does. Only one monitor can listen at a time.
class DebugOutput {
public:
    // Throws std::runtime_error when another monitor listens already.
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // What a process has written so far, one entry a call, in order. A text keeps its
    // line feeds, is cut after 4,091 bytes, and has lost what the system's ANSI code page
    // cannot hold: the system passes it on so.
    std::vector<std::wstring> Lines(DWORD processId) const;

    // Waits until a process has written an entry that contains the text, among the
    // entries from the one with the given index on. False when the time is up.
    bool WaitFor(DWORD processId, std::wstring_view text, std::chrono::milliseconds timeout,
                 std::size_t from = 0) const;

private:
    struct Entry {
        DWORD processId;
        std::wstring text;
    };

    void Listen();
    void Take();
    // With the mutex held.
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
