// Tests wWinMain, which is compiled into this test program.

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

}  // namespace
}  // namespace tavrin::ui
