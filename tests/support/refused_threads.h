#pragma once

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <pthread.h>
#endif

#include <cerrno>

#include "support/import_patch.h"

namespace tavrin::test {

// As long as it lives, the program can start no thread: std::thread throws std::system_error.
class RefusedThreads {
#if !defined(_WIN32)
    static int Refuse(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*) {
        return EAGAIN;
    }
    const ImportPatch<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)> patch_{
        "pthread_create", Refuse};
#elif defined(__MINGW32__)
    static uintptr_t __cdecl Refuse(void*, unsigned, unsigned(__stdcall*)(void*), void*, unsigned,
                                    unsigned*) {
        errno = EAGAIN;
        return 0;
    }
    const ImportPatch<decltype(_beginthreadex)> patch_{"_beginthreadex", Refuse};
#else
    static HANDLE WINAPI Refuse(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID,
                                DWORD, LPDWORD) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    const ImportPatch<decltype(CreateThread)> patch_{"CreateThread", Refuse};
#endif
};

}  // namespace tavrin::test
