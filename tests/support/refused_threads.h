#pragma once

#include <cerrno>
#include <cstdint>

#include <process.h>
#include <windows.h>

#include "support/import_patch.h"

namespace tavrin::test {

// The import through which the standard library of this compiler starts a thread.
#ifdef __MINGW32__
inline constexpr char kThreadStart[] = "_beginthreadex";
#else
inline constexpr char kThreadStart[] = "CreateThread";
#endif

// While it exists, the program cannot start a thread: std::thread throws std::system_error.
class RefusedThreads {
#ifdef __MINGW32__
    static std::uintptr_t __cdecl Refuse(void*, unsigned, unsigned(__stdcall*)(void*), void*,
                                         unsigned, unsigned*) {
        errno = EAGAIN;
        return 0;
    }
    const ImportPatch<decltype(_beginthreadex)> patch_{kThreadStart, Refuse};
#else
    static HANDLE WINAPI Refuse(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID,
                                DWORD, LPDWORD) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    const ImportPatch<decltype(CreateThread)> patch_{kThreadStart, Refuse};
#endif
};

}  // namespace tavrin::test
