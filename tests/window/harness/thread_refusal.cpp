#include "window/harness/thread_refusal.h"

#include <psapi.h>

#include <cstddef>
#include <iterator>
#include <stdexcept>

#include "support/import_patch.h"
#include "support/refused_threads.h"
#include "window/harness/app_process.h"

namespace tavrin::test {
namespace {

void Require(BOOL succeeded) {
    if (!succeeded) {
        throw std::runtime_error("cannot change the imports of the program");
    }
}

HMODULE ExeOf(HANDLE process) {
    HMODULE exe = nullptr;
    DWORD needed = 0;
    Require(EnumProcessModules(process, &exe, sizeof(exe), &needed));
    return exe;
}

// Returns the address of an import table entry in the running program. Its offset in the exe equals
// that in a copy mapped into this process.
void* PlaceOfImport(HANDLE process, const char* functionName) {
    const HMODULE there = ExeOf(process);
    wchar_t path[MAX_PATH];
    Require(GetModuleFileNameExW(process, there, path, static_cast<DWORD>(std::size(path))) != 0);
    const HMODULE here = LoadLibraryExW(path, nullptr, DONT_RESOLVE_DLL_REFERENCES);
    Require(here != nullptr);
    const auto offset = reinterpret_cast<std::byte*>(FindImport(functionName, here)) -
                        reinterpret_cast<std::byte*>(here);
    FreeLibrary(here);
    return reinterpret_cast<std::byte*>(there) + offset;
}

}  // namespace

// In a program without a console, GetConsoleWindow returns null, like a failed thread start. A
// system DLL is at the same address in every process.
ThreadRefusal::ThreadRefusal(const AppProcess& app)
    : process_(app.handle()),
      place_(PlaceOfImport(process_, kThreadStart)),
      original_(Exchange(reinterpret_cast<void*>(
          GetProcAddress(GetModuleHandleW(L"kernel32"), "GetConsoleWindow")))) {}

ThreadRefusal::~ThreadRefusal() {
    try {
        Exchange(original_);
    } catch (const std::runtime_error&) {
        // The program has ended.
    }
}

void* ThreadRefusal::Exchange(void* function) const {
    void* former = nullptr;
    DWORD protection = 0;
    Require(VirtualProtectEx(process_, place_, sizeof(former), PAGE_READWRITE, &protection));
    Require(ReadProcessMemory(process_, place_, &former, sizeof(former), nullptr));
    Require(WriteProcessMemory(process_, place_, &function, sizeof(function), nullptr));
    VirtualProtectEx(process_, place_, sizeof(former), protection, &protection);
    return former;
}

}  // namespace tavrin::test
