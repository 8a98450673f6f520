#pragma once

#include <windows.h>

namespace tavrin::test {

class AppProcess;

// While the object lives, the running program can start no thread.
class ThreadRefusal {
public:
    // The process must outlive the object. Throws std::runtime_error if the process cannot be
    // changed.
    explicit ThreadRefusal(const AppProcess& app);
    ~ThreadRefusal();
    ThreadRefusal(const ThreadRefusal&) = delete;
    ThreadRefusal& operator=(const ThreadRefusal&) = delete;

private:
    void* Exchange(void* function) const;

    HANDLE process_;
    void* place_;  // an entry of the program's import table
    void* original_;
};

}  // namespace tavrin::test
