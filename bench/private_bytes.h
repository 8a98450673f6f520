#pragma once

#include <cstdint>

#include <windows.h>
#include <psapi.h>

namespace tavrin::bench {

// Returns the private memory of a process in bytes. PrivateUsage is the same figure on Windows, but
// Wine leaves it 0.
inline std::uint64_t PrivateBytes(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(process, &counters, sizeof(counters));
    return counters.PagefileUsage;
}

}  // namespace tavrin::bench
