#include "base/decimal_text.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

namespace tavrin::base {
namespace {

TEST(DecimalText, WritesPlainDigits) {
    EXPECT_EQ(DecimalText(0), L"0");
    EXPECT_EQ(DecimalText(7), L"7");
    EXPECT_EQ(DecimalText(1234567), L"1234567");
    EXPECT_EQ(DecimalText(18446744073709551615u), L"18446744073709551615");
}

TEST(AppendDecimal, FillsUpWithZerosAndNeverCuts) {
    const struct {
        std::uint64_t number;
        int width;
        const wchar_t* text;
    } cases[] = {
        {7, 2, L"x07"}, {0, 2, L"x00"}, {123, 2, L"x123"}, {5, 4, L"x0005"}, {5, 0, L"x5"}};
    for (const auto& [number, width, expected] : cases) {
        std::wstring text = L"x";
        AppendDecimal(text, number, width);
        EXPECT_EQ(text, expected);
    }
}

}  // namespace
}  // namespace tavrin::base
