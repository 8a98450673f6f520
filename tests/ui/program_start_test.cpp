// Tests wWinMain, which is compiled into this test program.

#include <cstdio>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "support/import_patch.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int);

namespace tavrin::ui {
namespace {

INITCOMMONCONTROLSEX g_asked;

BOOL WINAPI RefuseClasses(const INITCOMMONCONTROLSEX* classes) {
    g_asked = *classes;
    return FALSE;
}

TEST(ProgramStart, EndsAtOnceIfTheControlClassesCannotBeRegistered) {
    const test::ImportPatch<decltype(InitCommonControlsEx)> patch("InitCommonControlsEx",
                                                                  RefuseClasses);
    g_asked = {};

    EXPECT_EQ(wWinMain(GetModuleHandleW(nullptr), nullptr, nullptr, SW_HIDE), 0);

    EXPECT_EQ(g_asked.dwSize, sizeof(INITCOMMONCONTROLSEX));
    EXPECT_EQ(g_asked.dwICC, static_cast<DWORD>(ICC_DATE_CLASSES | ICC_COOL_CLASSES));
}

// These replace the functions that the start calls. A resource's handle is its number.

HICON WINAPI NumberOfIcon(HINSTANCE, LPCWSTR name) {
    return reinterpret_cast<HICON>(reinterpret_cast<UINT_PTR>(name));
}

HCURSOR WINAPI NumberOfCursor(HINSTANCE, LPCWSTR name) {
    return reinterpret_cast<HCURSOR>(reinterpret_cast<UINT_PTR>(name));
}

unsigned NumberIn(const void* handle) {
    return static_cast<unsigned>(reinterpret_cast<UINT_PTR>(handle));
}

ATOM WINAPI PrintClass(const WNDCLASSEXW* description) {
    std::fprintf(stderr, "icon %u cursor %u brush %u menu %u, ", NumberIn(description->hIcon),
                 NumberIn(description->hCursor), NumberIn(description->hbrBackground),
                 NumberIn(description->lpszMenuName));
    return 1;
}

HWND WINAPI PretendToCreate(DWORD, LPCWSTR, LPCWSTR, DWORD, int, int, int, int, HWND, HMENU,
                            HINSTANCE, LPVOID) {
    return GetDesktopWindow();
}

BOOL WINAPI PrintShowCommand(HWND, int command) {
    std::fprintf(stderr, "shown as %d", command);
    PostQuitMessage(7);
    return FALSE;
}

void Start(int showCommand) {
    const test::ImportPatch<decltype(LoadIconW)> icon("LoadIconW", NumberOfIcon);
    const test::ImportPatch<decltype(LoadCursorW)> cursor("LoadCursorW", NumberOfCursor);
    const test::ImportPatch<decltype(RegisterClassExW)> classes("RegisterClassExW", PrintClass);
    const test::ImportPatch<decltype(CreateWindowExW)> create("CreateWindowExW", PretendToCreate);
    const test::ImportPatch<decltype(ShowWindow)> show("ShowWindow", PrintShowCommand);
    wWinMain(GetModuleHandleW(nullptr), nullptr, nullptr, showCommand);
}

// wWinMain ends its process, so a process of its own runs it.
TEST(ProgramStartDeathTest, RegistersTheWindowClassAndShowsTheWindowAsAsked) {
    // IDC_ARROW and COLOR_WINDOW + 1.
    EXPECT_EXIT(Start(SW_SHOWMAXIMIZED), testing::ExitedWithCode(7),
                "icon 2 cursor 32512 brush 6 menu 109, shown as 3");
}

}  // namespace
}  // namespace tavrin::ui
