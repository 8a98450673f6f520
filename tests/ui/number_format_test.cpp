#include "ui/rules/number_format.h"

#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"

namespace tavrin::ui {
namespace {

// The user's locale according to the patched functions, and the arguments they got.
struct Locale {
    std::wstring decimal = L"[dec]";
    std::wstring thousands = L"[tho]";
    bool formats = true;
    std::wstring answer = L"formatted";

    std::vector<int> capacities;
    LCID locale = 0;
    DWORD flags = 1;
    std::wstring digits;
    NUMBERFMTW format{};
    std::wstring usedDecimal;
    std::wstring usedThousands;
    int capacity = 0;
};
Locale g_locale;

int WINAPI LocaleInfo(LCID locale, LCTYPE type, LPWSTR text, int capacity) {
    EXPECT_EQ(locale, static_cast<LCID>(LOCALE_USER_DEFAULT));
    g_locale.capacities.push_back(capacity);
    const std::wstring& info = type == LOCALE_SDECIMAL ? g_locale.decimal : g_locale.thousands;
    EXPECT_TRUE(type == LOCALE_SDECIMAL || type == LOCALE_STHOUSAND) << type;
    text[info.copy(text, static_cast<std::size_t>(capacity) - 1)] = L'\0';
    return static_cast<int>(info.size()) + 1;
}

int WINAPI NumberFormat(LCID locale, DWORD flags, LPCWSTR digits, const NUMBERFMTW* format,
                        LPWSTR text, int capacity) {
    g_locale.locale = locale;
    g_locale.flags = flags;
    g_locale.digits = digits;
    g_locale.format = *format;
    g_locale.usedDecimal = format->lpDecimalSep;
    g_locale.usedThousands = format->lpThousandSep;
    g_locale.capacity = capacity;
    if (!g_locale.formats) {
        return 0;
    }
    text[g_locale.answer.copy(text, static_cast<std::size_t>(capacity) - 1)] = L'\0';
    return static_cast<int>(g_locale.answer.size()) + 1;
}

class FormatCountTest : public testing::Test {
protected:
    FormatCountTest() { g_locale = Locale(); }

private:
    test::ImportPatch<decltype(GetLocaleInfoW)> info_{"GetLocaleInfoW", LocaleInfo};
    test::ImportPatch<decltype(GetNumberFormatW)> format_{"GetNumberFormatW", NumberFormat};
};

TEST_F(FormatCountTest, AsksForGroupsOfThreeWithTheUsersSeparators) {
    EXPECT_EQ(FormatCount(1234567), L"formatted");

    EXPECT_EQ(g_locale.locale, static_cast<LCID>(LOCALE_USER_DEFAULT));
    EXPECT_EQ(g_locale.flags, 0u);
    EXPECT_EQ(g_locale.digits, L"1234567");
    EXPECT_EQ(g_locale.format.NumDigits, 0u);
    EXPECT_EQ(g_locale.format.LeadingZero, 0u);
    EXPECT_EQ(g_locale.format.Grouping, 3u);
    EXPECT_EQ(g_locale.format.NegativeOrder, 0u);
    EXPECT_EQ(g_locale.usedDecimal, L"[dec]");
    EXPECT_EQ(g_locale.usedThousands, L"[tho]");
    EXPECT_EQ(g_locale.capacity, 64);
    EXPECT_EQ(g_locale.capacities, (std::vector<int>{8, 8}));
}

TEST_F(FormatCountTest, ShowsPlainDigitsWhereTheSystemCannotFormat) {
    g_locale.formats = false;

    EXPECT_EQ(FormatCount(1234567), L"1234567");
    EXPECT_EQ(FormatCount(18446744073709551615u), L"18446744073709551615");
}

TEST_F(FormatCountTest, ShowsZeroWhereTheSystemFormatsItAsNothing) {
    g_locale.answer = L"";

    EXPECT_EQ(FormatCount(0), L"0");
}

TEST(FormatCount, GroupsDigitsAsTheUserDoes) {
    wchar_t separator[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, separator, 8);
    const std::wstring s = separator;
    const struct {
        std::uint64_t count;
        std::wstring text;
    } cases[] = {
        {0, L"0"},
        {7, L"7"},
        {999, L"999"},
        {1000, L"1" + s + L"000"},
        {1234567, L"1" + s + L"234" + s + L"567"},
    };
    for (const auto& [count, text] : cases) {
        EXPECT_EQ(FormatCount(count), text);
    }
}

}  // namespace
}  // namespace tavrin::ui
