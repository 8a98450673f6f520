#pragma once

#include <windows.h>

namespace tavrin::bench {

// What a process has taken of the processors so far, by itself and within the system.
inline double ProcessorMilliseconds(HANDLE process) {
    FILETIME created{};
    FILETIME exited{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(process, &created, &exited, &kernel, &user);
    return (kernel.dwLowDateTime + user.dwLowDateTime) / 1e4;
}

}  // namespace tavrin::bench
