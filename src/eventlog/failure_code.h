#pragma once

#include <cstdint>

#include <windows.h>

namespace tavrin::eventlog {

// The code of a failed call as a result in which 0 means success. GetLastError can be 0 after
// a failure; 1359 (ERROR_INTERNAL_ERROR) stands for it.
constexpr std::uint32_t FailureCode(DWORD lastError) {
    return lastError == ERROR_SUCCESS ? ERROR_INTERNAL_ERROR : lastError;
}

}  // namespace tavrin::eventlog
