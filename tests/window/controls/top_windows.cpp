#include "window/controls/top_windows.h"

#include "support/wait_until.h"

namespace tavrin::test {
namespace {

struct Search {
    DWORD processId;
    const wchar_t* className;
    HWND found;
};

BOOL CALLBACK TakeMatch(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    if (owner != search.processId || _wcsicmp(name, search.className) != 0 ||
        !IsWindowVisible(window)) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

}  // namespace

HWND FindTopWindow(DWORD processId, const wchar_t* className) {
    Search search{processId, className, nullptr};
    EnumWindows(TakeMatch, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND WaitForTopWindow(DWORD processId, const wchar_t* className) {
    HWND window = nullptr;
    WaitUntil([&] { return (window = FindTopWindow(processId, className)) != nullptr; });
    return window;
}

bool WaitForNoTopWindow(DWORD processId, const wchar_t* className) {
    return WaitUntil([&] { return FindTopWindow(processId, className) == nullptr; });
}

}  // namespace tavrin::test
