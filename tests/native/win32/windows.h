#pragma once

// The part of Win32 that diag, eventlog, query, the replay service and their tests use, for a
// native Linux build. wchar_t has 32 bits there and holds one UTF-16 code unit. Functions implement
// only the behaviour that these callers rely on.

#include <cstddef>
#include <cstdint>

#include <pthread.h>

#define WINAPI
#define CALLBACK
#define __C89_NAMELESS __extension__
#define __MSABI_LONG(number) number
#define __CRT__NO_INLINE

#define TRUE 1
#define FALSE 0
#define INFINITE 0xFFFFFFFFU
#define MAX_PATH 260

using BYTE = std::uint8_t;
using PBYTE = BYTE*;
using UINT8 = std::uint8_t;
using UINT16 = std::uint16_t;
using UINT32 = std::uint32_t;
using UINT64 = std::uint64_t;
using INT8 = std::int8_t;
using INT16 = std::int16_t;
using INT32 = std::int32_t;
using INT64 = std::int64_t;
using BOOL = int;
using WINBOOL = BOOL;
using LPBOOL = BOOL*;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using PDWORD = DWORD*;
using LPDWORD = DWORD*;
using UINT = unsigned;
using LONG = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using LCID = DWORD;
using SIZE_T = std::size_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using PSID = void*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using LPCCH = const char*;
using LPCWCH = const wchar_t*;

using HANDLE = void*;
struct HWND__;
using HWND = HWND__*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
struct HRSRC__;
using HRSRC = HRSRC__*;
using HGLOBAL = void*;
struct HKEY__;
using HKEY = HKEY__*;
using PHKEY = HKEY*;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;
using PFILETIME = FILETIME*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

union LARGE_INTEGER {
    LONGLONG QuadPart;
};

struct OVERLAPPED {
    DWORD Offset;
    DWORD OffsetHigh;
};
struct SECURITY_ATTRIBUTES;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
struct TIME_ZONE_INFORMATION;

#include <winerror.h>

extern "C" {

DWORD GetLastError();
void SetLastError(DWORD error);

// Kernel objects.
#define INVALID_HANDLE_VALUE reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1))
#define WAIT_OBJECT_0 0U
#define WAIT_FAILED 0xFFFFFFFFU
#define DUPLICATE_SAME_ACCESS 2U
BOOL CloseHandle(HANDLE handle);
BOOL DuplicateHandle(HANDLE process, HANDLE source, HANDLE otherProcess, HANDLE* target,
                     DWORD access, BOOL inherit, DWORD options);
HANDLE CreateEventW(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL signalled, LPCWSTR name);
BOOL SetEvent(HANDLE event);
BOOL ResetEvent(HANDLE event);
DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds);
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all, DWORD milliseconds);

// Locks.
struct SRWLOCK {
    pthread_rwlock_t lock;
};
#define SRWLOCK_INIT               \
    SRWLOCK {                      \
        PTHREAD_RWLOCK_INITIALIZER \
    }
void AcquireSRWLockExclusive(SRWLOCK* lock);
BOOL TryAcquireSRWLockExclusive(SRWLOCK* lock);
void ReleaseSRWLockExclusive(SRWLOCK* lock);
void AcquireSRWLockShared(SRWLOCK* lock);
void ReleaseSRWLockShared(SRWLOCK* lock);

// Thread-local storage.
using PFLS_CALLBACK_FUNCTION = void (*)(void* value);
DWORD FlsAlloc(PFLS_CALLBACK_FUNCTION destroy);
BOOL FlsFree(DWORD index);
void* FlsGetValue(DWORD index);
BOOL FlsSetValue(DWORD index, void* value);

// Files and pipes.
#define GENERIC_READ 0x80000000U
#define GENERIC_WRITE 0x40000000U
#define FILE_SHARE_READ 1U
#define FILE_SHARE_WRITE 2U
#define FILE_SHARE_DELETE 4U
#define CREATE_ALWAYS 2U
#define OPEN_EXISTING 3U
#define FILE_ATTRIBUTE_ARCHIVE 0x20U
#define FILE_ATTRIBUTE_NORMAL 0x80U
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFU
#define STD_ERROR_HANDLE 0xFFFFFFF4U
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                   DWORD disposition, DWORD attributes, HANDLE pattern);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, OVERLAPPED* at);
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, OVERLAPPED* at);
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
DWORD GetFileAttributesW(LPCWSTR path);
HANDLE GetStdHandle(DWORD which);
BOOL SetStdHandle(DWORD which, HANDLE handle);
BOOL CreatePipe(HANDLE* read, HANDLE* write, LPSECURITY_ATTRIBUTES security, DWORD size);
BOOL PeekNamedPipe(HANDLE pipe, LPVOID buffer, DWORD size, LPDWORD read, LPDWORD available,
                   LPDWORD left);

// File mappings.
#define PAGE_READONLY 2U
#define PAGE_READWRITE 4U
#define FILE_MAP_WRITE 2U
#define FILE_MAP_READ 4U
HANDLE CreateFileMappingW(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCWSTR name);
HANDLE OpenFileMappingW(DWORD access, BOOL inherit, LPCWSTR name);
LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow, SIZE_T size);
BOOL UnmapViewOfFile(LPCVOID view);

// Time. Local time is UTC.
void Sleep(DWORD milliseconds);
ULONGLONG GetTickCount64();
BOOL QueryPerformanceCounter(LARGE_INTEGER* ticks);
BOOL QueryPerformanceFrequency(LARGE_INTEGER* ticksPerSecond);
void YieldProcessor();
void GetSystemTimeAsFileTime(FILETIME* time);
BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* fields);
BOOL SystemTimeToFileTime(const SYSTEMTIME* fields, FILETIME* time);
BOOL FileTimeToLocalFileTime(const FILETIME* utc, FILETIME* local);
BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* utc);
BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                                     SYSTEMTIME* utc);

// Text.
#define CP_ACP 0U
#define CP_UTF8 65001U
#define WC_ERR_INVALID_CHARS 0x80U
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR bytes, int room,
                        LPCSTR substitute, LPBOOL substituted);
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int count, LPWSTR wide, int room);
DWORD CharLowerBuffW(LPWSTR text, DWORD units);

// Debugger output and window messages. There are no windows.
void OutputDebugStringA(LPCSTR text);
void OutputDebugStringW(LPCWSTR text);
#define WM_USER 0x400U
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Modules and their resources.
#define DLL_PROCESS_DETACH 0U
#define DLL_PROCESS_ATTACH 1U
#define GET_MODULE_HANDLE_EX_FLAG_PIN 1U
#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 2U
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 4U
#define MAKEINTRESOURCEW(id) reinterpret_cast<LPCWSTR>(static_cast<std::uintptr_t>(id))
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR addressOrName, HMODULE* module);
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD units);
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL resource);
DWORD SizeofResource(HMODULE module, HRSRC resource);

// Processes, threads and their environment.
struct STARTUPINFOW {
    DWORD cb;
};
struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
HANDLE GetCurrentProcess();
DWORD GetCurrentProcessId();
DWORD GetCurrentThreadId();
BOOL CreateProcessW(LPCWSTR program, LPWSTR command, LPSECURITY_ATTRIBUTES processSecurity,
                    LPSECURITY_ATTRIBUTES threadSecurity, BOOL inherit, DWORD flags,
                    LPVOID environment, LPCWSTR directory, STARTUPINFOW* startup,
                    PROCESS_INFORMATION* process);
BOOL TerminateProcess(HANDLE process, UINT code);
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR value, DWORD units);
BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);

// The registry: a tree of keys without values, empty at first.
using LSTATUS = LONG;
using REGSAM = DWORD;
#define HKEY_LOCAL_MACHINE reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000002U))
#define KEY_ENUMERATE_SUB_KEYS 8U
#define KEY_ALL_ACCESS 0xF003FU
LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR name, DWORD reserved, LPWSTR type, DWORD options,
                        REGSAM access, LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD created);
LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR name, DWORD options, REGSAM access, PHKEY key);
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD units, LPDWORD reserved,
                      LPWSTR type, LPDWORD typeUnits, FILETIME* written);
LSTATUS RegDeleteTreeW(HKEY parent, LPCWSTR name);
LSTATUS RegCloseKey(HKEY key);

}  // extern "C"
