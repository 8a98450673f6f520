#pragma once

#include <cstdint>

#include <windows.h>

namespace tavrin::bench {

inline double MillisecondsOf(const FILETIME& duration) {
    const std::uint64_t high = duration.dwHighDateTime;
    return static_cast<double>(high << 32 | duration.dwLowDateTime) / 1e4;
}

// Returns the processor time of a process so far, user and kernel, in milliseconds.
inline double ProcessorMilliseconds(HANDLE process) {
    FILETIME created{};
    FILETIME exited{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(process, &created, &exited, &kernel, &user);
    return MillisecondsOf(kernel) + MillisecondsOf(user);
}

}  // namespace tavrin::bench
