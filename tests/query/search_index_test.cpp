#include "query/search_index.h"

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
    return index.KindOf(0) == index.KindOf(1);
}

TEST(SearchIndex, ProviderLevelAndProcessMakeTheKind) {
    EXPECT_TRUE(IsOfFirstsKind(EventRecord(2, 2, 10, 2, {}, L"P", L"Q", 1)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 2, kTime, L"Q", L"P", 0)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 2, kTime, L"P2", L"P", 0)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 10, 3, kTime, L"P", L"P", 0)));
    EXPECT_FALSE(IsOfFirstsKind(EventRecord(1, 1, 11, 2, kTime, L"P", L"P", 0)));
}

TEST(SearchIndex, KeepsAnExampleOfEachKind) {
    const EventRecord second(2, 1, 10, 2, kTime, L"Q", L"Q", 0);
    SearchIndex index;
    index.Add(kFirst);
    index.Add(second);
    index.Add(kFirst);

    ASSERT_EQ(index.KindCount(), 2u);
    EXPECT_EQ(index.KindsFrom(0)[0], &kFirst);
    EXPECT_EQ(index.KindsFrom(1)[0], &second);
    EXPECT_TRUE(index.KindsFrom(2).empty());
}

TEST(SearchIndex, KeepsEachRecordsTime) {
    SearchIndex index;
    index.Add(EventRecord(1, 1, 1, 1, {}, L"P", L"P", 0));
    index.Add(kFirst);

    ASSERT_EQ(index.RecordCount(), 2u);
    EXPECT_EQ(index.TimeOf(0), kNoTimeDigits);
    EXPECT_EQ(index.TimeOf(1), 0x05032024070903u);
}

TEST(SearchIndex, ForgetsAllWhenCleared) {
    SearchIndex index;
    index.Add(kFirst);

    index.Clear();

    EXPECT_EQ(index.RecordCount(), 0u);
    EXPECT_EQ(index.KindCount(), 0u);
    const EventRecord other(1, 1, 1, 1, {}, L"Q", L"Q", 0);
    index.Add(other);
    EXPECT_EQ(index.KindsFrom(0)[0], &other);
}

}  // namespace
}  // namespace tavrin::query
