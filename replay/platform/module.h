#pragma once

#include <windows.h>

namespace replay::platform {

// This library.
HMODULE ThisModule();

// Keeps this library loaded until the process ends, for threads that run its code.
void PinThisModule();

}  // namespace replay::platform
