#pragma once

#include <cstddef>

#include <windows.h>

namespace tavrin::test {

// What a process holds of the system's. Where the system does not tell, the user objects are those
// of all processes on the desktop.
struct ProcessResources {
    unsigned gdiObjects = 0;
    unsigned userObjects = 0;
    unsigned kernelHandles = 0;
};

ProcessResources ResourcesOf(HANDLE process);

// The memory that a process shares with no other.
std::size_t PrivateBytes(HANDLE process);

}  // namespace tavrin::test
