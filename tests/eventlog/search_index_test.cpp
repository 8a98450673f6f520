#include "eventlog/search_index.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "eventlog/event_node.h"
#include "eventlog/event_record.h"

namespace tavrin::eventlog {
namespace {

constexpr CalendarTime kTime{2024, 3, 5, 7, 9, 3};

EventRecordPtr Record(const std::wstring& provider, unsigned level = 2, std::uint32_t process = 10,
                      const CalendarTime& time = kTime) {
    return std::make_shared<const EventRecord>(1, 1, process, static_cast<std::uint8_t>(level),
                                               time, provider.c_str(), L"source", 0);
}

SearchKeys KeysOf(const EventRecordList& records) {
    SearchIndex index;
    for (const EventRecordPtr& record : records) {
        index.Add(record);
    }
    SearchKeys keys;
    index.CopyTo(keys, 0, records.size());
    return keys;
}

bool AreOfOneKind(const EventRecordPtr& a, const EventRecordPtr& b) {
    const SearchKeys keys = KeysOf({a, b});
    return keys.keys[0].kind == keys.keys[1].kind;
}

TEST(SearchIndex, ProviderAndLevelMakeTheKind) {
    EXPECT_TRUE(AreOfOneKind(Record(L"P"), Record(L"P", 2, 20, {})));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"Q")));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"P2")));
    EXPECT_FALSE(AreOfOneKind(Record(L"P"), Record(L"P", 3)));
}

TEST(SearchIndex, TellsNamesOfAnyLengthApart) {
    for (std::size_t length = 0; length < 127; ++length) {
        const std::wstring name(length, L'a');
        const SearchKeys keys = KeysOf({Record(name), Record(name + L'a'), Record(name)});
        EXPECT_EQ(keys.kinds.size(), 2u) << length;
        EXPECT_EQ(keys.keys[2].kind, 0u) << length;
    }
}

TEST(SearchIndex, AKindIsKnownByItsFirstRecord) {
    const EventRecordList records{Record(L"P"), Record(L"Q"), Record(L"P")};

    EXPECT_EQ(KeysOf(records).kinds, EventRecordList(records.begin(), records.begin() + 2));
}

TEST(SearchIndex, KeepsEachRecordsTimeAndProcess) {
    const SearchKeys keys = KeysOf({Record(L"P", 1, 123456789, {}), Record(L"P")});

    EXPECT_EQ(keys.keys[0].time, kNoTimeDigits);
    EXPECT_EQ(keys.keys[0].process, kNoProcessDigits);
    EXPECT_EQ(keys.keys[1].time, 0x05032024070903u);
    EXPECT_EQ(keys.keys[1].process, 0xFFFFFF10u);
}

TEST(SearchIndex, APartIsGivenWhatItLacks) {
    SearchIndex index;
    index.Add(Record(L"P", 1, 1));
    SearchKeys part;
    index.CopyTo(part, 0, 1);
    index.Add(Record(L"Q", 1, 2));
    index.Add(Record(L"P", 1, 3));
    index.CopyTo(part, 1, 3);

    ASSERT_EQ(part.keys.size(), 3u);
    EXPECT_EQ(part.keys[1].process, 0xFFFFFFF2u);
    EXPECT_EQ(part.keys[2].process, 0xFFFFFFF3u);
    EXPECT_EQ(part.kinds.size(), 2u);
}

TEST(SearchIndex, ForgetsAllWhenCleared) {
    SearchIndex index;
    index.Add(Record(L"P"));

    index.Clear();

    const EventRecordPtr other = Record(L"Q");
    index.Add(other);
    SearchKeys keys;
    index.CopyTo(keys, 0, 1);
    EXPECT_EQ(keys.keys[0].kind, 0u);
    EXPECT_EQ(keys.kinds, EventRecordList{other});
}

}  // namespace
}  // namespace tavrin::eventlog
