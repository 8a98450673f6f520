#include "ui/event_rows.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/event_record.h"
#include "eventlog/load_protocol.h"

namespace tavrin::ui {
namespace {

using eventlog::EventNode;
using eventlog::EventRecord;
using eventlog::EventRecordPtr;

EventRecordPtr MakeRecord(std::uint64_t recordId, const wchar_t* provider) {
    return std::make_shared<const EventRecord>(recordId, 1, 1, std::uint8_t{4},
                                               eventlog::CalendarTime{}, provider, provider, 0);
}

class EventRowsTest : public testing::Test {
protected:
    // Hands records over as a loader does, with ascending ids.
    void Load(const std::vector<const wchar_t*>& providers) {
        for (const wchar_t* provider : providers) {
            AppendRecords(node_, {MakeRecord(++lastId_, provider)});
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

TEST_F(EventRowsTest, ABatchIsWhatTheLoaderAddedSinceTheLast) {
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

TEST_F(EventRowsTest, ABatchBeginsAtTheNodesCounter) {
    Load({L"A", L"B", L"C"});
    node_.counter = 2;

    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    EXPECT_EQ(ShownIds(), Ids{3});
}

TEST_F(EventRowsTest, MoreFollowsUntilTheLoadIsDoneOrHasFailed) {
    const struct {
        std::uint8_t done;
        std::uint32_t result;
        bool more;
    } cases[] = {{0, 0, true}, {1, 0, false}, {0, 5, false}, {1, 5, false}};
    for (const auto& [done, result, more] : cases) {
        node_.done = done;
        node_.loadResult = result;
        EXPECT_EQ(rows_.TakeBatch(node_), more) << int{done} << ", " << result;
    }
}

TEST_F(EventRowsTest, ABatchIsTakenUnderTheRecordListMutex) {
    std::future<bool> taken;
    {
        const std::lock_guard lock(node_.recordListMutex);
        taken = std::async(std::launch::async, [this] { return rows_.TakeBatch(node_); });
        EXPECT_EQ(taken.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
        node_.recordList.push_back(MakeRecord(1, L"A"));
        node_.searchIndex.Add(node_.recordList.back());
        node_.done = 1;  // seen only together with the record
    }
    EXPECT_FALSE(taken.get());
    EXPECT_EQ(rows_.LoadedCount(), 1u);
}

TEST_F(EventRowsTest, TheKeysAreThoseOfTheLoadedRecords) {
    Load({L"A", L"B"});
    rows_.TakeBatch(node_);
    Load({L"A", L"C"});
    rows_.TakeBatch(node_);

    ASSERT_EQ(rows_.Keys().keys.size(), 4u);
    EXPECT_EQ(rows_.Keys().keys[2].kind, rows_.Keys().keys[0].kind);
    EXPECT_EQ(rows_.Keys().kinds.size(), 3u);

    rows_.Clear();
    EXPECT_TRUE(rows_.Keys().keys.empty());
    EXPECT_TRUE(rows_.Keys().kinds.empty());
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

TEST_F(EventRowsTest, EachRecordIsTestedOnceALoad) {
    Load({L"A"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"no such text");
    Load({L"A"});
    rows_.TakeBatch(node_);

    rows_.AppendMatching(L"");

    EXPECT_EQ(ShownIds(), Ids{2}) << "the first record was tested again";
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
    EXPECT_EQ(ShownIds(), (Ids{1, 2})) << "rebuilt rows were appended again";
}

TEST_F(EventRowsTest, ClearForgetsRecordsRowsAndTests) {
    Load({L"A", L"B"});
    rows_.TakeBatch(node_);
    rows_.AppendMatching(L"");

    EXPECT_EQ(rows_.Clear(), node_.recordList) << "not given back";
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
}  // namespace tavrin::ui
