#include "query/search_index.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "eventlog/event_record.h"

namespace tavrin::query {
namespace {

using eventlog::EventRecord;

constexpr eventlog::CalendarTime kTime{2024, 3, 5, 7, 9, 3};

const EventRecord kFirst(1, 1, 10, 2, kTime, L"P", L"P", 0);

bool IsOfFirstsKind(const EventRecord& record) {
    SearchIndex index;
    index.Add(kFirst);
    index.Add(record);
    return index.Keys()[0].kind == index.Keys()[1].kind;
}

TEST(SearchIndex, ProviderAndLevelMakeTheKind) {
    EXPECT_TRUE(IsOfFirstsKind(EventRecord(2, 2, 20, 2, {}, L"P", L"Q", 1)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 2, kTime, L"Q", L"P", 0)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 2, kTime, L"P2", L"P", 0)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 3, kTime, L"P", L"P", 0)));
}

TEST(SearchIndex, TellsNamesOfAnyLengthApart) {
    for (std::size_t length = 0; length < 127; ++length) {
        const std::wstring name(length, L'a');
        const EventRecord shorter(1, 1, 10, 2, kTime, name.c_str(), L"", 0);
        const EventRecord longer(1, 1, 10, 2, kTime, (name + L'a').c_str(), L"", 0);
        SearchIndex index;
        index.Add(shorter);
        index.Add(longer);
        index.Add(shorter);
        EXPECT_EQ(index.Kinds().size(), 2u) << length;
        EXPECT_EQ(index.Keys()[2].kind, 0u) << length;
    }
}

TEST(SearchIndex, AKindIsKnownByItsFirstRecord) {
    const EventRecord second(2, 1, 10, 2, kTime, L"Q", L"Q", 0);
    SearchIndex index;
    index.Add(kFirst);
    index.Add(second);
    index.Add(kFirst);

    ASSERT_EQ(index.Kinds().size(), 2u);
    EXPECT_EQ(index.Kinds()[0], &kFirst);
    EXPECT_EQ(index.Kinds()[1], &second);
}

TEST(SearchIndex, KeepsEachRecordsTimeAndProcess) {
    SearchIndex index;
    index.Add(EventRecord(1, 1, 123456789, 1, {}, L"P", L"P", 0));
    index.Add(kFirst);

    ASSERT_EQ(index.Keys().size(), 2u);
    EXPECT_EQ(index.Keys()[0].time, kNoTimeDigits);
    EXPECT_EQ(index.Keys()[0].process, kNoProcessDigits);
    EXPECT_EQ(index.Keys()[1].time, 0x05032024070903u);
    EXPECT_EQ(index.Keys()[1].process, 0xFFFFFF10u);
}

TEST(SearchIndex, ForgetsAllWhenCleared) {
    SearchIndex index;
    index.Add(kFirst);

    index.Clear();

    EXPECT_TRUE(index.Keys().empty());
    EXPECT_TRUE(index.Kinds().empty());
    const EventRecord other(1, 1, 1, 1, {}, L"Q", L"Q", 0);
    index.Add(other);
    EXPECT_EQ(index.Kinds()[0], &other);
}

}  // namespace
}  // namespace tavrin::query
