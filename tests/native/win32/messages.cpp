#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "text.h"
#include "waitable.h"

// OutputDebugStringA for a debug monitor: waits until the shared buffer is free, writes the text
// into it and signals the monitor.

namespace {

constexpr DWORD kMonitorBytes = 4096;
constexpr DWORD kMonitorPatienceMs = 10'000;

void CopyTo(void* shared, LPCSTR text) {
    const DWORD process = GetCurrentProcessId();
    std::memcpy(shared, &process, sizeof process);
    const std::size_t length =
        std::min<std::size_t>(std::strlen(text), kMonitorBytes - sizeof process - 1);
    char* const place = static_cast<char*>(shared) + sizeof process;
    std::memcpy(place, text, length);
    place[length] = '\0';
}

}  // namespace

void OutputDebugStringA(LPCSTR text) {
    // One caller at a time, because the shared buffer holds one text.
    static auto& mutex = *new std::mutex;
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, L"DBWIN_BUFFER");
    if (mapping == nullptr)
        return;
    const HANDLE ready = CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_BUFFER_READY");
    const HANDLE data = CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY");
    {
        const std::lock_guard guard(mutex);
        if (WaitForSingleObject(ready, kMonitorPatienceMs) == WAIT_OBJECT_0) {
            void* const view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, kMonitorBytes);
            CopyTo(view, text);
            UnmapViewOfFile(view);
            SetEvent(data);
        }
    }
    CloseHandle(data);
    CloseHandle(ready);
    CloseHandle(mapping);
}

void OutputDebugStringW(LPCWSTR text) {
    OutputDebugStringA(native::ToUtf8(text).c_str());
}

BOOL PostMessageW(HWND, UINT, WPARAM, LPARAM) {
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
}
