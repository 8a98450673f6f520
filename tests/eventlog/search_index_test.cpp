#include "eventlog/records/search_index.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/test_record.h"

namespace tavrin::eventlog {
namespace {

using test::MakeRecord;

constexpr CalendarTime kTime{2024, 3, 5, 7, 9, 3};

EventRecordPtr Record(const wchar_t* provider, std::uint8_t level = 2, std::uint32_t process = 10,
                      const CalendarTime& time = kTime) {
    return MakeRecord({.process = process, .level = level, .time = time, .provider = provider});
}

bool AreOfOneKind(const EventRecordPtr& a, const EventRecordPtr& b) {
    const EventRecordList records{a, b};
    const PageIndex index = SearchKeyMaker().Index(records);
    return index.keys[0].kind == index.keys[1].kind;
}

TEST(SearchIndex, AKindIsAProviderAndALevel) {
    EXPECT_TRUE(AreOfOneKind(Record(L"P"), Record(L"P", 2, 20, {})));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"Q")));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"P2")));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"P", 3)));
}

TEST(SearchIndex, TellsNamesOfAnyLengthApart) {
    for (std::size_t length = 0; length < 127; ++length) {
        const std::wstring name(length, L'a');
        const std::wstring longer = name + L'a';
        const EventRecordList records{Record(name.c_str()), Record(longer.c_str()),
                                      Record(name.c_str())};
        const PageIndex index = SearchKeyMaker().Index(records);
        EXPECT_EQ(index.newKinds.size(), 2u) << length;
        EXPECT_EQ(index.keys[2].kind, 0u) << length;
    }
}

// One step of the name hash, which takes eight bytes, and its inverse.
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kInverse = 0xF1DE83E19937733D;
static_assert(kMultiplier * kInverse == 1);

constexpr std::uint64_t HashStep(std::uint64_t hash, std::uint64_t part) {
    hash = (hash ^ part) * kMultiplier;
    return hash ^ hash >> 32;
}

constexpr std::uint64_t UndoHashStep(std::uint64_t hash) {
    return (hash ^ hash >> 32) * kInverse;
}

// Returns a name of sixteen bytes with the same hash as the other name.
std::wstring NameWithHashOf(const wchar_t* other) {
    const EventRecordPtr record = Record(other, 0);
    const std::uint64_t wanted = UndoHashStep(SearchKeyMaker::HashKind()(record.get()));
    constexpr std::size_t kUnits = sizeof(std::uint64_t) / sizeof(wchar_t);
    std::wstring name(2 * kUnits, L'a');
    std::uint64_t first = 0;
    std::memcpy(&first, name.data(), sizeof(first));
    const std::uint64_t second = UndoHashStep(wanted) ^ HashStep(0, first);
    std::memcpy(&name[kUnits], &second, sizeof(second));
    return name;
}

TEST(SearchIndex, DistinguishesNamesWithEqualHashes) {
    const EventRecordPtr record = Record(L"Provider");
    const EventRecordPtr other = Record(NameWithHashOf(L"Provider").c_str());
    constexpr SearchKeyMaker::HashKind kHash{};
    ASSERT_EQ(kHash(record.get()), kHash(other.get()));

    EXPECT_FALSE(AreOfOneKind(record, other));
}

TEST(SearchIndex, AKindPointsToItsFirstRecord) {
    const EventRecordList records{Record(L"P"), Record(L"Q"), Record(L"P")};

    EXPECT_EQ(SearchKeyMaker().Index(records).newKinds,
              EventRecordList(records.begin(), records.begin() + 2));
}

TEST(SearchIndex, KeepsEachRecordsTimeAndProcess) {
    const EventRecordList records{Record(L"P", 1, 123456789, {}), Record(L"P")};
    const PageIndex index = SearchKeyMaker().Index(records);

    EXPECT_EQ(index.keys[0].time, kNoTimeDigits);
    EXPECT_EQ(index.keys[0].process, kNoProcessDigits);
    EXPECT_EQ(index.keys[1].time, 0x05032024070903u);
    EXPECT_EQ(index.keys[1].process, 0xFFFFFF10u);
}

TEST(SearchIndex, KindsAreNumberedThroughThePagesOfALoad) {
    const EventRecordList first{Record(L"P"), Record(L"Q")};
    const EventRecordList second{Record(L"Q"), Record(L"R"), Record(L"P"), Record(L"S")};
    SearchKeyMaker maker;
    maker.Index(first);
    const PageIndex added = maker.Index(second);

    EXPECT_EQ(added.newKinds, (EventRecordList{second[1], second[3]}));
    const std::uint32_t kinds[] = {1, 2, 0, 3};
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        EXPECT_EQ(added.keys[i].kind, kinds[i]) << i;
    }
}

}  // namespace
}  // namespace tavrin::eventlog
