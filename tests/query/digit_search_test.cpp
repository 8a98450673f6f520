#include "query/digit_search.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "eventlog/records/packed_digits.h"

namespace tavrin::query {
namespace {

using eventlog::PackProcess;
using eventlog::PackTime;

constexpr std::wstring_view kTime = L"05/03/2024 17:09:58";

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

TEST(DigitSearch, AnUnusedPositionMatchesNoDigit) {
    EXPECT_FALSE(DigitSearch::InTimes(L"0").OccursIn(PackTime(L"11/12/2113 14:15:16")));
    EXPECT_TRUE(DigitSearch::InTimes(L"3").OccursIn(PackTime(L"11/12/2113 14:15:16")));
    EXPECT_FALSE(DigitSearch::InProcesses(L"0").OccursIn(PackProcess(L"4711")));
    EXPECT_FALSE(DigitSearch::InProcesses(L"0").OccursIn(PackProcess(L"12345678")));
    EXPECT_TRUE(DigitSearch::InProcesses(L"1").OccursIn(PackProcess(L"12345678")));
}

}  // namespace
}  // namespace tavrin::query
