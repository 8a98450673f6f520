#include "ui/rules/load_error_text.h"

#include <cstdint>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"
#include "ui/rules/number_format.h"

namespace tavrin::ui {
namespace {

// What the patched FormatMessageW and LocalFree return and what they saw.
struct System {
    const wchar_t* message = L"";  // null: Windows has no message
    DWORD flags = 0;
    DWORD code = 0;
    bool plain = false;  // no source, no arguments, default language
    wchar_t* given = nullptr;
    HLOCAL freed = nullptr;
    int frees = 0;
};
System g_system;

using FormatMessageFunction = DWORD WINAPI(DWORD, LPCVOID, DWORD, DWORD, LPWSTR, DWORD, char**);

DWORD WINAPI FormatMessageAs(DWORD flags, LPCVOID source, DWORD code, DWORD language, LPWSTR text,
                             DWORD, char** arguments) {
    g_system.flags = flags;
    g_system.code = code;
    g_system.plain = source == nullptr && language == 0 && arguments == nullptr;
    if (g_system.message == nullptr) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return 0;
    }
    const std::wstring message = g_system.message;
    g_system.given =
        static_cast<wchar_t*>(LocalAlloc(LMEM_FIXED, (message.size() + 1) * sizeof(wchar_t)));
    g_system.given[message.copy(g_system.given, message.size())] = L'\0';
    *reinterpret_cast<wchar_t**>(text) = g_system.given;
    return static_cast<DWORD>(message.size());
}

decltype(&LocalFree) g_originalFree = nullptr;

HLOCAL WINAPI Free(HLOCAL memory) {
    if (memory != nullptr && memory == g_system.given) {
        ++g_system.frees;
    }
    return g_originalFree(memory);
}

class SystemMessageTest : public testing::Test {
protected:
    SystemMessageTest() {
        g_system = System();
        g_originalFree = free_.Original();
    }

private:
    test::ImportPatch<FormatMessageFunction> format_{"FormatMessageW", FormatMessageAs};
    test::ImportPatch<decltype(LocalFree)> free_{"LocalFree", Free};
};

TEST(LoadErrorText, HasTextsOfItsOwnForFourCodes) {
    const struct {
        std::uint32_t code;
        const wchar_t* text;
    } cases[] = {
        {5, L"Access denied. Run as administrator to view this log."},
        {15007, L"The log was not found. It may have been removed or its provider uninstalled."},
        {15011,
         L"The log changed while it was being read (it may have been cleared). Reselect it to "
         L"reload."},
        {15022,
         L"This is an enabled Analytic/Debug log. It must be disabled before its events can be "
         L"viewed."},
    };
    for (const auto& [code, text] : cases) {
        EXPECT_EQ(LoadErrorText(code), text);
    }
}

TEST_F(SystemMessageTest, CombinesTheSystemsTextWithEveryOtherCode) {
    g_system.message = L"The RPC server is unavailable.";

    EXPECT_EQ(LoadErrorText(1722), L"The RPC server is unavailable. (error 1722)");
    EXPECT_EQ(g_system.code, 1722u);
}

TEST_F(SystemMessageTest, LosesTheLineBreaksAndBlanksAtItsEnd) {
    const struct {
        const wchar_t* message;
        const wchar_t* text;
    } cases[] = {
        {L"Text.\r\n", L"Text. (error 87)"},
        {L"Text. \r\n \n\r", L"Text. (error 87)"},
        {L" Two\r\nlines. ", L" Two\r\nlines. (error 87)"},
        {L"Tab.\t", L"Tab.\t (error 87)"},
        {L"\r\n ", L"Unknown error. (error 87)"},
    };
    for (const auto& [message, text] : cases) {
        g_system.message = message;
        EXPECT_EQ(LoadErrorText(87), text);
    }
}

TEST_F(SystemMessageTest, IsRequestedWithoutInsertsInABufferThatIsFreedOnce) {
    g_system.message = L"%1 is not there.";

    EXPECT_EQ(LoadErrorText(4294967295), L"%1 is not there. (error 4294967295)");

    EXPECT_EQ(g_system.flags,
              static_cast<DWORD>(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER |
                                 FORMAT_MESSAGE_IGNORE_INSERTS));
    EXPECT_TRUE(g_system.plain);
    EXPECT_EQ(g_system.frees, 1);
}

TEST_F(SystemMessageTest, IsUnknownErrorWhereTheSystemHasNone) {
    g_system.message = nullptr;

    EXPECT_EQ(LoadErrorText(15038), L"Unknown error. (error 15038)");
    EXPECT_EQ(LoadErrorText(0xFFFFFFFF), L"Unknown error. (error 4294967295)");
}

TEST(LoadErrorText, IsUnknownErrorForACodeThatWindowsDoesNotDefine) {
    EXPECT_EQ(LoadErrorText(0x2FFFFFFF), L"Unknown error. (error 805306367)");
}

TEST(LoadFailureMessage, NamesTheLogWhereNothingWasLoaded) {
    EXPECT_EQ(LoadFailureMessage(L"Foo-Bar/Admin", 5, 0),
              L"Failed to load Foo-Bar/Admin: Access denied. Run as administrator to view this "
              L"log.");
}

TEST(LoadFailureMessage, CountsTheEventsThatWereLoaded) {
    EXPECT_EQ(LoadFailureMessage(L"Foo-Bar/Admin", 15007, 1),
              L"Loading stopped after 1 events: The log was not found. It may have been removed or "
              L"its provider uninstalled.");
    EXPECT_EQ(LoadFailureMessage(L"System", 15007, 10112),
              L"Loading stopped after " + FormatCount(10112) +
                  L" events: The log was not found. It may have been removed or its provider "
                  L"uninstalled.");
}

TEST(LoadFailureDetails, AddTheLogAndTheCode) {
    EXPECT_EQ(LoadFailureDetails(L"The message.", L"Foo-Bar/Admin", 15022),
              L"The message.\r\n\r\nLog: Foo-Bar/Admin\r\nError code: 15022");
}

}  // namespace
}  // namespace tavrin::ui
