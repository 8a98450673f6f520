#pragma once

#include <cstddef>

#include <windows.h>
#include <psapi.h>

namespace tavrin::test {

// Returns the private memory of a process in bytes. PrivateUsage is the same figure on Windows, but
// Wine leaves it 0.
inline std::size_t PrivateBytes(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(process, &counters, sizeof(counters));
    return counters.PagefileUsage;
}

}  // namespace tavrin::test
