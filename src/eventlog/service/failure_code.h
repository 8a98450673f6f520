#pragma once

#include <cstdint>
#include <exception>

#include <windows.h>

namespace tavrin::eventlog {

// The code of a failed call, for results in which 0 means success. GetLastError can be 0 after a
// failure; it becomes 1359 (ERROR_INTERNAL_ERROR).
constexpr std::uint32_t FailureCode(DWORD lastError) {
    return lastError == ERROR_SUCCESS ? ERROR_INTERNAL_ERROR : lastError;
}

// The code to show for an exception: 8 (ERROR_NOT_ENOUGH_MEMORY) for memory, 164
// (ERROR_MAX_THRDS_REACHED) for a thread that cannot be started, otherwise 1359.
std::uint32_t FailureCodeOf(const std::exception& caught);

}  // namespace tavrin::eventlog
