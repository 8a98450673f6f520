#pragma once

#include <chrono>

#include <windows.h>

namespace tavrin::test {

// Ends a process by force when the object outlives the time: a window that hangs would keep
// whoever sends it a message waiting for ever.
class Deadline {
public:
    // The process handle must outlive the object.
    Deadline(HANDLE process, std::chrono::milliseconds time);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    static constexpr UINT kExitCode = 98;

private:
    HANDLE timer_ = nullptr;
};

}  // namespace tavrin::test
