#pragma once

#include <windows.h>

namespace tavrin::test {

// The system resources of a process. Wine does not count user objects per process: there
// userObjects covers all processes of the desktop.
struct ProcessResources {
    unsigned gdiObjects = 0;
    unsigned userObjects = 0;
    unsigned kernelHandles = 0;
};

ProcessResources ResourcesOf(HANDLE process);

}  // namespace tavrin::test
