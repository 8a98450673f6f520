#pragma once

#include <chrono>

#include <windows.h>

namespace tavrin::test {

// Terminates a process if the object still exists at the timeout. Without it, a test that sends a
// message to a hung window would wait for ever.
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
