#include "base/utf8.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"
#include "support/message_of.h"

namespace tavrin::base {
namespace {

struct ConversionCall {
    UINT codePage;
    DWORD flags;
    bool withBuffer;

    bool operator==(const ConversionCall&) const = default;
};

std::vector<ConversionCall> g_calls;
int g_failingCall = 0;
decltype(&WideCharToMultiByte) g_original = nullptr;

int WINAPI Convert(UINT codePage, DWORD flags, LPCWCH text, int units, LPSTR bytes, int room,
                   LPCCH fallback, LPBOOL usedFallback) {
    g_calls.push_back({codePage, flags, room > 0});
    if (static_cast<int>(g_calls.size()) == g_failingCall) {
        SetLastError(ERROR_NO_UNICODE_TRANSLATION);
        return 0;
    }
    return g_original(codePage, flags, text, units, bytes, room, fallback, usedFallback);
}

// Records the conversion calls and can make one of them fail.
class ToUtf8Calls : public testing::Test {
protected:
    ToUtf8Calls() {
        g_calls.clear();
        g_failingCall = 0;
        g_original = patch_.Original();
    }

    test::ImportPatch<decltype(WideCharToMultiByte)> patch_{"WideCharToMultiByte", Convert};
};

TEST(ToUtf8, ConvertsEveryCharacter) {
    EXPECT_EQ(ToUtf8(L"Windows-Logs is not a channel!"), "Windows-Logs is not a channel!");
    EXPECT_EQ(ToUtf8(L"\x00e9\x65e5\xd83d\xde00"), "\xc3\xa9\xe6\x97\xa5\xf0\x9f\x98\x80");
    EXPECT_EQ(ToUtf8(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(ToUtf8, RefusesALoneSurrogate) {
    EXPECT_EQ(test::MessageOf<std::runtime_error>([] { ToUtf8(L"a\xd83d"); }),
              "WideCharToMultiByte failed");
}

TEST_F(ToUtf8Calls, AsksForTheLengthAndThenConvertsStrictly) {
    EXPECT_EQ(ToUtf8(L"abc"), "abc");

    const std::vector<ConversionCall> expected = {{65001, 0x80, false}, {65001, 0x80, true}};
    EXPECT_EQ(g_calls, expected);
}

TEST_F(ToUtf8Calls, ConvertsAnEmptyTextWithoutACall) {
    EXPECT_EQ(ToUtf8(L""), "");
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(ToUtf8Calls, AFailureOfEitherCallIsAnError) {
    for (g_failingCall = 1; g_failingCall <= 2; ++g_failingCall) {
        g_calls.clear();
        EXPECT_EQ(test::MessageOf<std::runtime_error>([] { ToUtf8(L"abc"); }),
                  "WideCharToMultiByte failed");
    }
}

}  // namespace
}  // namespace tavrin::base
