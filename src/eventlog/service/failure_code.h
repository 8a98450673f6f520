#pragma once

#include <cstdint>
#include <exception>

#include <windows.h>

namespace tavrin::eventlog {

// The code of a failed call as a result in which 0 means success. GetLastError can be 0 after
// a failure; 1359 (ERROR_INTERNAL_ERROR) stands for it.
constexpr std::uint32_t FailureCode(DWORD lastError) {
    return lastError == ERROR_SUCCESS ? ERROR_INTERNAL_ERROR : lastError;
}

// The code under which the user learns of an exception: 8 (ERROR_NOT_ENOUGH_MEMORY), 164
// (ERROR_MAX_THRDS_REACHED) for a thread that cannot be started, otherwise 1359.
std::uint32_t FailureCodeOf(const std::exception& caught);

}  // namespace tavrin::eventlog
