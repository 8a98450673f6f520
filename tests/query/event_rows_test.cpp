#include "query/event_rows.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/loading/load_protocol.h"
#include "eventlog/records/event_record.h"
#include "support/test_record.h"

namespace tavrin::query {
namespace {

using eventlog::EventNode;

class EventRowsTest : public testing::Test {
protected:
    // Appends one record for each provider, as a loader does. Record ids ascend from 1.
    void Load(const std::vector<const wchar_t*>& providers) {
        for (const wchar_t* provider : providers) {
            AppendPage(node_, {test::MakeRecord({.recordId = ++lastId_, .provider = provider})});
        }
    }

    std::vector<std::uint64_t> ShownIds() const {
        std::vector<std::uint64_t> ids;
        for (std::size_t row = 0; row < rows_.RowCount(); ++row) {
            ids.push_back(rows_.Row(static_cast<std::int64_t>(row))->recordId);
        }
        return ids;
    }

    using Ids = std::vector<std::uint64_t>;

    EventNode node_{L"System", L"System", 0x006};
    EventRows rows_;

private:
    std::uint64_t lastId_ = 0;
};

TEST_F(EventRowsTest, ABatchHoldsTheRecordsAddedSinceTheLastOne) {
    Load({L"A", L"B"});
    rows_.TakeBatch(node_);
    EXPECT_EQ(rows_.LoadedCount(), 2u);
    EXPECT_EQ(node_.counter, 2u);

    Load({L"C"});
    rows_.TakeBatch(node_);
    EXPECT_EQ(rows_.LoadedCount(), 3u);
    EXPECT_EQ(node_.counter, 3u);

    rows_.TakeBatch(node_);
    EXPECT_EQ(rows_.LoadedCount(), 3u);
}

TEST_F(EventRowsTest, ABatchHasNoLimit) {
    Load(std::vector<const wchar_t*>(30'000, L"A"));

    rows_.TakeBatch(node_);

    EXPECT_EQ(rows_.LoadedCount(), 30'000u);
}

TEST_F(EventRowsTest, ABatchLeavesTheRecordsWithTheNode) {
    Load({L"A"});

    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    ASSERT_EQ(node_.recordList.size(), 1u);
    EXPECT_EQ(rows_.Row(0), node_.recordList[0].get());
}

TEST_F(EventRowsTest, ABatchTellsWhetherMoreFollows) {
    EXPECT_TRUE(rows_.TakeBatch(node_).more);
    node_.done = 1;
    EXPECT_FALSE(rows_.TakeBatch(node_).more);
}

TEST_F(EventRowsTest, ABatchListsItsNewProviders) {
    Load({L"A", L"B", L"A"});
    EXPECT_EQ(rows_.TakeBatch(node_).providers, (SourceSet{L"A", L"B"}));

    Load({L"A", L"C"});
    EXPECT_EQ(rows_.TakeBatch(node_).providers, SourceSet{L"C"});
    EXPECT_EQ(rows_.TakeBatch(node_).providers, SourceSet{});
}

TEST_F(EventRowsTest, ANewTextAppliesToTheFollowingRecords) {
    Load({L"X", L"Y"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"X");
    Load({L"Y", L"X"});
    rows_.TakeBatch(node_);

    rows_.AppendMatching(L"Y");

    EXPECT_EQ(ShownIds(), (Ids{1, 3}));
}

TEST_F(EventRowsTest, ATextIsJudgedAnewForAnotherLoad) {
    Load({L"X", L"Y"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"X");
    rows_.Clear();
    ResetForLoad(node_, L"");

    Load({L"Y", L"X"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"X");

    EXPECT_EQ(ShownIds(), Ids{4});
}

TEST_F(EventRowsTest, RecordsAreRowsOnlyOnceTheyAreTested) {
    Load({L"A"});
    rows_.TakeBatch(node_);

    EXPECT_EQ(rows_.RowCount(), 0u);

    rows_.AppendMatching(L"");

    EXPECT_EQ(rows_.RowCount(), 1u);
}

TEST_F(EventRowsTest, WithoutATextEveryRecordIsARowInLoadOrder) {
    Load({L"C", L"A", L"B"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    EXPECT_EQ(ShownIds(), (Ids{1, 2, 3}));
}

TEST_F(EventRowsTest, ATextShowsTheRecordsThatItMatches) {
    Load({L"MsiInstaller", L"Other", L"msi two"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"MSI");

    EXPECT_EQ(ShownIds(), (Ids{1, 3}));
}

TEST_F(EventRowsTest, EachRecordIsTestedOncePerLoad) {
    Load({L"A"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"no such text");
    Load({L"A"});
    rows_.TakeBatch(node_);

    rows_.AppendMatching(L"");

    EXPECT_EQ(ShownIds(), Ids{2}) << "the first record must not be tested again";
}

TEST_F(EventRowsTest, RebuildTestsEveryLoadedRecordAnew) {
    Load({L"A", L"B"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"A");

    rows_.Rebuild(L"B");
    EXPECT_EQ(ShownIds(), Ids{2});

    rows_.Rebuild(L"");
    EXPECT_EQ(ShownIds(), (Ids{1, 2}));

    rows_.AppendMatching(L"");
    EXPECT_EQ(ShownIds(), (Ids{1, 2})) << "rebuilt rows must not be appended again";
}

TEST_F(EventRowsTest, ClearForgetsRecordsRowsAndTests) {
    Load({L"A", L"B"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    EXPECT_EQ(test::Elements(rows_.Clear().records), test::Elements(node_.recordList))
        << "Clear must return the records";
    EXPECT_EQ(rows_.LoadedCount(), 0u);
    EXPECT_EQ(rows_.RowCount(), 0u);

    node_.counter = 0;  // drained again, without reading the log
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");
    EXPECT_EQ(ShownIds(), (Ids{1, 2}));
}

TEST_F(EventRowsTest, ARowThatDoesNotExistHasNoRecord) {
    Load({L"A"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    EXPECT_NE(rows_.Row(0), nullptr);
    EXPECT_EQ(rows_.Row(1), nullptr);
    EXPECT_EQ(rows_.Row(-1), nullptr);
    EXPECT_EQ(rows_.Row(INT64_MAX), nullptr);
}

}  // namespace
}  // namespace tavrin::query
