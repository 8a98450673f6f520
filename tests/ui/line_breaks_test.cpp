#include "ui/rules/line_breaks.h"

#include <string>

#include <gtest/gtest.h>

namespace tavrin::ui {
namespace {

TEST(WithLineBreakPairs, TurnsEveryLineBreakIntoAPair) {
    const struct {
        const wchar_t* text;
        const wchar_t* paired;
    } cases[] = {
        {L"", L""},
        {L"a", L"a"},
        {L"a\r\nb", L"a\r\nb"},
        {L"a\rb", L"a\r\nb"},
        {L"a\nb", L"a\r\nb"},
        {L"\r\n", L"\r\n"},
        {L"\r", L"\r\n"},
        {L"\n", L"\r\n"},
        {L"\n\n", L"\r\n\r\n"},
        {L"\r\r", L"\r\n\r\n"},
        {L"\n\r", L"\r\n\r\n"},
        {L"\r\r\n", L"\r\n\r\n"},
        {L"\r\n\n", L"\r\n\r\n"},
        {L"\r\n\r\n", L"\r\n\r\n"},
        {L"a\r\n\r\nb\nc\r", L"a\r\n\r\nb\r\nc\r\n"},
    };
    for (const auto& [text, paired] : cases) {
        EXPECT_EQ(WithLineBreakPairs(text), paired) << testing::PrintToString(std::wstring(text));
    }
}

TEST(WithLineBreakPairs, CopiesEveryOtherCharacter) {
    std::wstring text;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        if (unit != L'\r' && unit != L'\n') {
            text += static_cast<wchar_t>(unit);
        }
    }
    EXPECT_TRUE(WithLineBreakPairs(text) == text);
}

}  // namespace
}  // namespace tavrin::ui
