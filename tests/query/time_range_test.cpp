#include "query/time_range.h"

#include <cstdint>
#include <optional>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"

namespace tavrin::query {
namespace {

constexpr std::uint64_t kOneSecond = 10'000'000;
constexpr std::uint64_t kOneHour = 3600 * kOneSecond;

constexpr SYSTEMTIME kTenOClock{2024, 3, 5, 1, 10, 0, 0, 0};
constexpr SYSTEMTIME kOneSecondPastTen{2024, 3, 5, 1, 10, 0, 1, 0};

std::uint64_t AsFileTime(const SYSTEMTIME& fields) {
    FILETIME time{};
    SystemTimeToFileTime(&fields, &time);
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

bool Equal(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay && a.wHour == b.wHour &&
           a.wMinute == b.wMinute && a.wSecond == b.wSecond && a.wMilliseconds == b.wMilliseconds;
}

// A time zone two hours ahead of UTC. The program must pass a null zone: then Windows uses the
// current zone with the rules that hold at the local time's date.
BOOL WINAPI ToUtcTwoHoursBack(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                              LPSYSTEMTIME utc) {
    EXPECT_EQ(zone, nullptr);
    EXPECT_EQ(local->wMilliseconds, 0);
    const std::uint64_t time = AsFileTime(*local) - 2 * kOneHour;
    const FILETIME fileTime{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    return FileTimeToSystemTime(&fileTime, utc);
}

BOOL WINAPI FailToUtc(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, LPSYSTEMTIME) {
    return FALSE;
}

BOOL WINAPI FailToFileTime(const SYSTEMTIME*, LPFILETIME) {
    return FALSE;
}

class MakeTimeRangeTest : public testing::Test {
private:
    test::ImportPatch<decltype(TzSpecificLocalTimeToSystemTime)> zone_{
        "TzSpecificLocalTimeToSystemTime", ToUtcTwoHoursBack};
};

TEST_F(MakeTimeRangeTest, WithoutTimesHasNoBounds) {
    const TimeRangeFilter range = MakeTimeRange(std::nullopt, std::nullopt);

    EXPECT_FALSE(range.hasFrom);
    EXPECT_FALSE(range.hasTo);
    EXPECT_EQ(range.from, 0u);
    EXPECT_EQ(range.to, 0u);
}

TEST_F(MakeTimeRangeTest, ConvertsFromToUtc) {
    const TimeRangeFilter range = MakeTimeRange(kTenOClock, std::nullopt);

    EXPECT_TRUE(range.hasFrom);
    EXPECT_FALSE(range.hasTo);
    EXPECT_EQ(range.from, AsFileTime(kTenOClock) - 2 * kOneHour);
}

TEST_F(MakeTimeRangeTest, ConvertsToToUtcAndAddsOneSecond) {
    const TimeRangeFilter range = MakeTimeRange(std::nullopt, kTenOClock);

    EXPECT_FALSE(range.hasFrom);
    EXPECT_TRUE(range.hasTo);
    EXPECT_EQ(range.to, AsFileTime(kTenOClock) - 2 * kOneHour + kOneSecond);
}

TEST_F(MakeTimeRangeTest, DropsMilliseconds) {
    SYSTEMTIME withMilliseconds = kTenOClock;
    withMilliseconds.wMilliseconds = 999;

    const TimeRangeFilter range = MakeTimeRange(withMilliseconds, withMilliseconds);

    EXPECT_EQ(range.from, AsFileTime(kTenOClock) - 2 * kOneHour);
    EXPECT_EQ(range.to, range.from + kOneSecond);
}

TEST(MakeTimeRange, TakesATimeThatCannotBeMadeUtcAsNotPicked) {
    const test::ImportPatch<decltype(TzSpecificLocalTimeToSystemTime)> zone(
        "TzSpecificLocalTimeToSystemTime", FailToUtc);

    const TimeRangeFilter range = MakeTimeRange(kTenOClock, kTenOClock);

    EXPECT_FALSE(range.hasFrom);
    EXPECT_FALSE(range.hasTo);
}

TEST(MakeTimeRange, TreatsATimeThatIsNoFileTimeAsNotPicked) {
    const test::ImportPatch<decltype(SystemTimeToFileTime)> conversion("SystemTimeToFileTime",
                                                                       FailToFileTime);

    const TimeRangeFilter range = MakeTimeRange(kTenOClock, kTenOClock);

    EXPECT_FALSE(range.hasFrom);
    EXPECT_FALSE(range.hasTo);
}

TEST(IsOrdered, RequiresFromBeforeToOnlyIfBothAreSet) {
    const struct {
        TimeRangeFilter range;
        bool ordered;
    } cases[] = {
        {{false, false, 0, 0}, true}, {{true, false, 9, 0}, true}, {{false, true, 0, 0}, true},
        {{true, true, 1, 2}, true},   {{true, true, 2, 2}, false}, {{true, true, 3, 2}, false},
    };
    for (const auto& [range, ordered] : cases) {
        EXPECT_EQ(IsOrdered(range), ordered);
    }
}

TEST(IsOrdered, AcceptsFromInTheSameSecondAndRejectsTheNext) {
    EXPECT_TRUE(IsOrdered(MakeTimeRange(kTenOClock, kTenOClock)));
    EXPECT_FALSE(IsOrdered(MakeTimeRange(kOneSecondPastTen, kTenOClock)));
}

TEST(Differ, ComparesOnlyTheSetBounds) {
    const struct {
        TimeRangeFilter a;
        TimeRangeFilter b;
        bool differ;
    } cases[] = {
        {{false, false, 0, 0}, {false, false, 0, 0}, false},
        {{true, false, 1, 0}, {true, false, 1, 0}, false},
        {{true, false, 1, 0}, {true, false, 2, 0}, true},
        {{true, false, 1, 0}, {false, false, 1, 0}, true},
        {{false, true, 0, 1}, {false, true, 0, 2}, true},
        {{false, true, 0, 1}, {false, false, 0, 1}, true},
        {{false, false, 1, 1}, {false, false, 2, 2}, false},  // unset bounds
        {{true, true, 1, 2}, {true, true, 1, 2}, false},
        {{true, true, 1, 2}, {true, true, 1, 3}, true},
    };
    for (const auto& [a, b, differ] : cases) {
        EXPECT_EQ(Differ(a, b), differ);
        EXPECT_EQ(Differ(b, a), differ);
    }
}

TEST(FirstTimeOf, FromIsMidnightAndToIsTheCurrentSecond) {
    const SYSTEMTIME now{2024, 3, 2, 5, 17, 42, 23, 456};

    EXPECT_TRUE(Equal(FirstTimeOf(TimeBound::From, now), {2024, 3, 2, 5, 0, 0, 0, 0}));
    EXPECT_TRUE(Equal(FirstTimeOf(TimeBound::To, now), {2024, 3, 2, 5, 17, 42, 23, 0}));
}

TEST(ParseTimeText, ReadsTheDayFirst) {
    const auto time = ParseTimeText(L"05/03/2024 07:09:03");

    ASSERT_TRUE(time.has_value());
    EXPECT_TRUE(Equal(*time, {2024, 3, 0, 5, 7, 9, 3, 0}));
}

TEST(ParseTimeText, NeedsAllSixNumbers) {
    for (const wchar_t* text : {L"", L"05", L"05/03/2024", L"05/03/2024 07:09", L"a/b/c d:e:f",
                                L"05-03-2024 07:09:03", L"05/03/2024 07:09:"}) {
        EXPECT_FALSE(ParseTimeText(text).has_value()) << testing::PrintToString(std::wstring(text));
    }
}

}  // namespace
}  // namespace tavrin::query
