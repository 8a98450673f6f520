#include "query/packed_digits.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tavrin::query {
namespace {

constexpr std::wstring_view kTime = L"05/03/2024 17:09:58";

TEST(PackTime, KeepsTheDigitsInTheirOrder) {
    EXPECT_EQ(PackTime(kTime), 0x05032024170958u);
}

TEST(PackTime, HasNoneForATextOfAnotherLength) {
    EXPECT_EQ(PackTime(L"00/00/00 00:00:00"), kNoTimeDigits);
    EXPECT_EQ(PackTime(L"14/09/30828 02:48:05"), kNoTimeDigits);
    EXPECT_EQ(PackTime(L""), kNoTimeDigits);
}

TEST(PackProcess, KeepsUpToEightDigits) {
    EXPECT_EQ(PackProcess(L"0"), 0xFFFFFFF0u);
    EXPECT_EQ(PackProcess(L"4711"), 0xFFFF4711u);
    EXPECT_EQ(PackProcess(L"12345678"), 0x12345678u);
    EXPECT_EQ(PackProcess(L"123456789"), kNoProcessDigits);
}

TEST(DigitSearch, FindsEveryPartOfATime) {
    for (std::size_t begin = 0; begin < kTime.size(); ++begin) {
        for (std::size_t length = 1; begin + length <= kTime.size(); ++length) {
            const std::wstring part(kTime.substr(begin, length));
            EXPECT_TRUE(DigitSearch::InTimes(part).OccursIn(PackTime(kTime)))
                << testing::PrintToString(part);
        }
    }
}

TEST(DigitSearch, FindsNothingElseInATime) {
    for (const wchar_t* text :
         {L"", L"6", L"51", L"53", L"05:03", L"2024:", L"2024  ", L" 17 ", L"//", L"a",
          L"05/03/2024 17:09:59", L"05/03/2024 17:09:58 ", L"O5", L"\xff15", L"15/03", L"58 "}) {
        EXPECT_FALSE(DigitSearch::InTimes(text).OccursIn(PackTime(kTime)))
            << testing::PrintToString(std::wstring(text));
    }
}

TEST(DigitSearch, FindsEveryPartOfAProcessIdAndNothingElse) {
    const struct {
        const wchar_t* text;
        bool occurs;
    } cases[] = {{L"4", true},     {L"40", true},     {L"0", true},  {L"08", true},
                 {L"408", true},   {L"4080", true},   {L"", false},  {L"44", false},
                 {L"0408", false}, {L"04080", false}, {L"9", false}, {L"4081", false},
                 {L"8 ", false},   {L"/", false},     {L"?", false}, {L"40800000", false},
                 {L"40800", false}};
    for (const auto& [text, occurs] : cases) {
        EXPECT_EQ(DigitSearch::InProcesses(text).OccursIn(PackProcess(L"4080")), occurs)
            << testing::PrintToString(std::wstring(text));
    }
}

}  // namespace
}  // namespace tavrin::query
