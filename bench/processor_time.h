#pragma once

#include <windows.h>

namespace tavrin::bench {

// Returns the processor time of a process so far, user and kernel, in milliseconds.
inline double ProcessorMilliseconds(HANDLE process) {
    FILETIME created{};
    FILETIME exited{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(process, &created, &exited, &kernel, &user);
    return (kernel.dwLowDateTime + user.dwLowDateTime) / 1e4;
}

}  // namespace tavrin::bench
