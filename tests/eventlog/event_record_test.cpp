#include "eventlog/records/event_record.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace tavrin::eventlog {
namespace {

constexpr CalendarTime kFifthOfMarch{2024, 3, 5, 7, 9, 3};

static_assert(std::is_same_v<decltype(EventRecord::recordId), std::uint64_t>);
static_assert(std::is_same_v<decltype(EventRecord::eventId), std::uint32_t>);
static_assert(std::is_same_v<decltype(EventRecord::level), std::uint8_t>);
static_assert(std::is_same_v<decltype(EventRecord::providerName), wchar_t[128]>);
static_assert(std::is_same_v<decltype(EventRecord::keywords), std::uint64_t>);

EventRecord RecordOfLevel(std::uint8_t level) {
    return {1, 1, 1, level, kFifthOfMarch, L"Provider", L"Provider", 0};
}

EventRecord RecordOfProcess(std::uint32_t process) {
    return {1, 1, process, 4, kFifthOfMarch, L"Provider", L"Provider", 0};
}

EventRecord RecordOfProvider(const std::wstring& provider) {
    return {1, 1, 1, 4, kFifthOfMarch, provider.c_str(), L"Short", 0};
}

TEST(EventRecord, IsFilledByItsConstructor) {
    const EventRecord record(0x123456789ABCDEF0, 65535, 4711, 3, kFifthOfMarch, L"Acme-Foo-Bar",
                             L"Bar", 0x8020000000000000);

    EXPECT_EQ(record.recordId, 0x123456789ABCDEF0u);
    EXPECT_EQ(record.eventId, 65535u);
    EXPECT_EQ(record.processId, L"4711");
    EXPECT_EQ(record.level, 3u);
    EXPECT_EQ(record.timeText, L"05/03/2024 07:09:03");
    EXPECT_EQ(std::wstring(record.providerName), L"Acme-Foo-Bar");
    EXPECT_EQ(record.source, L"Bar");
    EXPECT_EQ(record.keywords, 0x8020000000000000u);
}

TEST(EventRecord, WritesTheProcessIdAsUnsignedDecimal) {
    EXPECT_EQ(RecordOfProcess(0).processId, L"0");
    EXPECT_EQ(RecordOfProcess(10).processId, L"10");
    EXPECT_EQ(RecordOfProcess(4294967295).processId, L"4294967295");
}

TEST(EventRecord, CutsTheProviderNameTo127UnitsAndAZero) {
    for (const std::size_t length : {0u, 126u, 127u, 128u, 130u, 1000u}) {
        const EventRecord record = RecordOfProvider(std::wstring(length, L'p'));

        EXPECT_EQ(std::wstring(record.providerName),
                  std::wstring(std::min<std::size_t>(length, 127), L'p'));
    }
}

TEST(LevelName, NamesTheLevelsOfTheTable) {
    const wchar_t* const names[] = {L"Information",   L"Critical",     L"Error",
                                    L"Warning",       L"Information",  L"Verbose",
                                    L"Audit Success", L"Audit Failure"};
    for (std::uint8_t level = 0; level < std::size(names); ++level) {
        EXPECT_STREQ(LevelName(RecordOfLevel(level)), names[level]) << int{level};
    }
}

TEST(LevelName, IsUnknownBeyondTheTable) {
    for (const int level : {8, 9, 16, 255}) {
        EXPECT_STREQ(LevelName(RecordOfLevel(static_cast<std::uint8_t>(level))), L"Unknown")
            << level;
    }
}

TEST(LevelName, IsConstantText) {
    EXPECT_EQ(LevelName(RecordOfLevel(2)), LevelName(RecordOfLevel(2)));
}

TEST(EffectiveLevel, ComesFromTheKeywordsOnlyWhereTheLevelIsZero) {
    const struct {
        std::uint8_t level;
        std::uint64_t keywords;
        std::uint8_t effective;
    } cases[] = {
        {0, 0x8020000000000000, 6},   {0, 0x8010000000000000, 7},
        {0, 0x8030000000000000, 6},  // both audit bits: success wins
        {0, 0xFFFFFFFFFFFFFFFF, 6},   {0, 0x8010000000000001, 7},
        {0, 0x0020000000000000, 0},  // the mask includes the top bit
        {0, 0x0010000000000000, 0},   {0, 0x8000000000000000, 0},
        {0, 0x8080000000000000, 0},   {0, 0, 0},
        {1, 0x8020000000000000, 1},   {4, 0x8010000000000000, 4},
        {16, 0x8020000000000000, 16}, {255, 0x8010000000000000, 255},
    };
    for (const auto& [level, keywords, effective] : cases) {
        EXPECT_EQ(EffectiveLevel(level, keywords), effective)
            << int{level} << " with " << std::hex << keywords;
    }
}

TEST(FormatTimeText, WritesTheDayFirstAndA24HourClock) {
    const struct {
        CalendarTime time;
        const wchar_t* text;
    } cases[] = {
        {kFifthOfMarch, L"05/03/2024 07:09:03"},
        {{1999, 12, 31, 23, 59, 59}, L"31/12/1999 23:59:59"},
        {{2024, 10, 11, 0, 0, 0}, L"11/10/2024 00:00:00"},
        {{1601, 1, 1, 0, 0, 0}, L"01/01/1601 00:00:00"},
        {{30827, 1, 1, 0, 0, 0}, L"01/01/30827 00:00:00"},
        {{}, L"00/00/00 00:00:00"},  // a time that could not be converted
    };
    for (const auto& [time, text] : cases) {
        EXPECT_EQ(FormatTimeText(time), text);
    }
}

TEST(ShortSourceName, IsWhatFollowsTheLastDash) {
    const struct {
        const wchar_t* provider;
        const wchar_t* source;
    } cases[] = {
        {L"Alpha Service", L"Alpha Service"},
        {L"Alpha-Beta-Gamma", L"Gamma"},
        {L"A-B-C", L"C"},
        {L"A/B-C", L"A/B-C"},  // a slash anywhere keeps the whole name
        {L"A-B/C", L"A-B/C"},
        {L"Alpha-", L""},
        {L"-Alpha", L"Alpha"},
        {L"-", L""},
        {L"", L""},
    };
    for (const auto& [provider, source] : cases) {
        EXPECT_EQ(ShortSourceName(provider), source);
    }
}

}  // namespace
}  // namespace tavrin::eventlog
