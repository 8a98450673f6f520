#include "query/time_digits.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tavrin::query {
namespace {

constexpr std::wstring_view kTime = L"05/03/2024 17:09:58";

TEST(TimeDigits, AreTheDigitsInTheirOrder) {
    EXPECT_EQ(PackTimeDigits(kTime), 0x05032024170958u);
}

TEST(TimeDigits, OfATextOfAnotherLengthAreNone) {
    EXPECT_EQ(PackTimeDigits(L"00/00/00 00:00:00"), kNoTimeDigits);
    EXPECT_EQ(PackTimeDigits(L"14/09/30828 02:48:05"), kNoTimeDigits);
    EXPECT_EQ(PackTimeDigits(L""), kNoTimeDigits);
}

TEST(TimeDigitSearch, FindsEveryPartOfATime) {
    for (std::size_t begin = 0; begin < kTime.size(); ++begin) {
        for (std::size_t length = 1; begin + length <= kTime.size(); ++length) {
            const std::wstring part(kTime.substr(begin, length));
            EXPECT_TRUE(TimeDigitSearch(part).OccursIn(PackTimeDigits(kTime)))
                << testing::PrintToString(part);
        }
    }
}

TEST(TimeDigitSearch, FindsNothingElse) {
    for (const wchar_t* text :
         {L"", L"6", L"51", L"53", L"05:03", L"2024:", L"2024  ", L" 17 ", L"//", L"a",
          L"05/03/2024 17:09:59", L"05/03/2024 17:09:58 ", L"O5", L"\xff15", L"15/03", L"58 "}) {
        EXPECT_FALSE(TimeDigitSearch(text).OccursIn(PackTimeDigits(kTime)))
            << testing::PrintToString(std::wstring(text));
    }
}

}  // namespace
}  // namespace tavrin::query
