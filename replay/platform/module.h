#pragma once

#include <windows.h>

namespace replay::platform {

// The module handle of this library.
HMODULE ThisModule();

// Keeps this library loaded until the process ends, because threads run its code.
void PinThisModule();

}  // namespace replay::platform
