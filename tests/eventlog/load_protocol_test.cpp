#include "eventlog/loading/load_protocol.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <limits>
#include <mutex>
#include <thread>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "support/test_record.h"
#include "support/wait_until.h"

namespace tavrin::eventlog {
namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

using test::Append;
using test::Elements;
using test::MakeRecord;

class LoadProtocol : public testing::Test {
protected:
    std::size_t Taken() {
        LoadedRecords taken;
        TakeRecords(node_, taken);
        return taken.records.size();
    }

    EventNode node_{L"System", L"System", 0x006};
};

TEST_F(LoadProtocol, ResetMakesTheNodeAsNewWithTheQuery) {
    Append(node_.recordList, {MakeRecord()});
    node_.query = L"old";
    node_.counter = 1;
    node_.done = 1;
    node_.loadResult = 5;
    node_.loading = 1;
    node_.loadedCount = 1;
    node_.loadLimit = kLargest;
    node_.stopRequested = 1;

    ResetForLoad(node_, L"new");

    EXPECT_TRUE(node_.recordList.empty());
    EXPECT_EQ(node_.query, L"new");
    EXPECT_EQ(node_.counter, 0u);
    EXPECT_EQ(node_.done.load(), 0u);
    EXPECT_EQ(node_.loadResult.load(), 0u);
    EXPECT_EQ(node_.loading.load(), 0u);
    EXPECT_EQ(node_.loadedCount.load(), 0u);
    EXPECT_EQ(node_.loadLimit, 10000u);
    EXPECT_EQ(node_.stopRequested.load(), 0u);
}

TEST_F(LoadProtocol, ResetWithTheNodesOwnQueryKeepsIt) {
    node_.query = L"<QueryList>a query that is long enough to live on the heap</QueryList>";

    ResetForLoad(node_, node_.query);

    EXPECT_EQ(node_.query,
              L"<QueryList>a query that is long enough to live on the heap</QueryList>");
}

TEST_F(LoadProtocol, ResetGivesTheRecordsBackAndForgetsThem) {
    const EventRecordPtr record = MakeRecord();
    AppendPage(node_, {record});

    EXPECT_EQ(Elements(ResetForLoad(node_, L"").records), EventRecordList{record});
    EXPECT_EQ(record.use_count(), 1) << "the search index must not hold the record";
}

TEST_F(LoadProtocol, KindsBeginAnewAfterAReset) {
    AppendPage(node_, {MakeRecord({.provider = L"P"})});
    ResetForLoad(node_, L"");
    AppendPage(node_, {MakeRecord({.provider = L"Q"})});

    EXPECT_EQ(node_.searchIndex.kinds.size(), 1u);
    EXPECT_EQ(node_.searchIndex.keys[0].kind, 0u);
}

TEST_F(LoadProtocol, ALoadBeginsOnceUntilTheReset) {
    node_.loadResult = 5;
    EXPECT_TRUE(BeginLoad(node_));
    EXPECT_EQ(node_.loadResult.load(), 0u);

    node_.loadResult = 5;
    EXPECT_FALSE(BeginLoad(node_));
    EXPECT_EQ(node_.loadResult.load(), 5u);

    ResetForLoad(node_, L"");
    EXPECT_TRUE(BeginLoad(node_));
}

TEST_F(LoadProtocol, APageArrivesInTheListTheIndexAndTheCount) {
    const EventRecordPtr a = MakeRecord({.process = 1});
    const EventRecordPtr b = MakeRecord({.process = 2});
    AppendPage(node_, {a});
    AppendPage(node_, {b, a});

    EXPECT_EQ(Elements(node_.recordList), (EventRecordList{a, b, a}));
    ASSERT_EQ(node_.searchIndex.keys.size(), 3u);
    EXPECT_EQ(node_.searchIndex.keys[0].process, 0xFFFFFFF1u);
    EXPECT_EQ(node_.searchIndex.keys[1].process, 0xFFFFFFF2u);
    EXPECT_EQ(node_.searchIndex.keys[2].process, 0xFFFFFFF1u);
    EXPECT_EQ(Elements(node_.searchIndex.kinds), EventRecordList{a});
    EXPECT_EQ(node_.loadedCount.load(), 3u);
}

TEST_F(LoadProtocol, AnEmptyPageAddsNothing) {
    AppendPage(node_, {});

    EXPECT_TRUE(node_.searchIndex.keys.empty());
    EXPECT_EQ(node_.loadedCount.load(), 0u);
}

TEST_F(LoadProtocol, TakesWhatWasAppendedSinceTheLastTime) {
    LoadedRecords taken;
    const auto expectAllTaken = [&] {
        TakeRecords(node_, taken);
        EXPECT_EQ(Elements(taken.records), Elements(node_.recordList));
        EXPECT_EQ(taken.index.keys.size(), node_.searchIndex.keys.size());
        EXPECT_EQ(Elements(taken.index.kinds), Elements(node_.searchIndex.kinds));
        EXPECT_EQ(node_.counter, node_.recordList.size());
    };
    AppendPage(node_, {MakeRecord(), MakeRecord()});
    AppendPage(node_, {MakeRecord()});
    expectAllTaken();
    AppendPage(node_, EventRecordList(2000, MakeRecord({.provider = L"Q"})));
    expectAllTaken();

    EXPECT_EQ(Taken(), 0u);
}

TEST_F(LoadProtocol, TakesFromTheFirstRecordAgainAfterARewind) {
    AppendPage(node_, {MakeRecord()});
    AppendPage(node_, {MakeRecord()});
    ASSERT_EQ(Taken(), 2u);

    RewindRecords(node_);

    EXPECT_EQ(Taken(), 2u);
}

TEST_F(LoadProtocol, MoreFollowsUntilTheLoadIsDoneOrHasFailed) {
    const struct {
        std::uint8_t done;
        std::uint32_t result;
        bool more;
    } cases[] = {{0, 0, true}, {1, 0, false}, {0, 5, false}, {1, 5, false}};
    for (const auto& [done, result, more] : cases) {
        node_.done = done;
        node_.loadResult = result;
        LoadedRecords taken;
        EXPECT_EQ(TakeRecords(node_, taken), more) << int{done} << ", " << result;
    }
}

TEST_F(LoadProtocol, RecordsAreTakenUnderTheirMutex) {
    LoadedRecords taken;
    std::future<bool> more;
    {
        const std::lock_guard lock(node_.recordListMutex);
        more = std::async(std::launch::async, [&] { return TakeRecords(node_, taken); });
        EXPECT_EQ(more.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
        node_.done = 1;  // visible only together with the records
    }
    EXPECT_FALSE(more.get());
}

// Showing a failed channel loads it again. The loader clears `loading` if it handed no records
// over; otherwise the window does.
TEST_F(LoadProtocol, ALoadThatFailedWithoutRecordsMayBeginAtOnce) {
    BeginLoad(node_);
    StoreLoadResult(node_, 5);
    EndFailedLoad(node_);

    EXPECT_EQ(node_.loadResult.load(), 5u);
    EXPECT_FALSE(HasLeftovers(node_));
    EXPECT_TRUE(BeginLoad(node_));
}

TEST_F(LoadProtocol, ALoadThatFailedBehindItsEndLeavesTheNextOneUnfinished) {
    BeginLoad(node_);
    MarkDone(node_);
    StoreLoadResult(node_, 8);
    EndFailedLoad(node_);

    EXPECT_TRUE(BeginLoad(node_));
    EXPECT_EQ(node_.done.load(), 0u);
}

TEST_F(LoadProtocol, ALoadThatFailedHalfWayMayBeginOnceItsRecordsAreTaken) {
    BeginLoad(node_);
    AppendPage(node_, {MakeRecord()});
    StoreLoadResult(node_, 5);
    EndFailedLoad(node_);
    EXPECT_FALSE(HasLeftovers(node_));
    EXPECT_FALSE(BeginLoad(node_));

    AcknowledgeFailure(node_);

    EXPECT_TRUE(HasLeftovers(node_));
    EXPECT_TRUE(BeginLoad(node_));
}

TEST_F(LoadProtocol, TheLoaderClearsAFailureWithoutRecords) {
    BeginLoad(node_);
    StoreLoadResult(node_, 5);

    AcknowledgeFailure(node_);

    EXPECT_EQ(node_.loading.load(), 1u) << "the loader has not ended";
}

TEST_F(LoadProtocol, AFailureWithoutACodeGetsOne) {
    EndFailedLoad(node_);

    EXPECT_EQ(node_.loadResult.load(), 1359u);
}

TEST_F(LoadProtocol, ExtendRaisesTheLimitToTenThousandBeyondWhatIsLoaded) {
    node_.loadedCount = 10112;

    ExtendLoad(node_);

    EXPECT_EQ(node_.loadLimit, 20112u);
}

TEST_F(LoadProtocol, ExtendNeverLowersTheLimit) {
    const struct {
        std::uint64_t loaded;
        std::uint64_t limit;
    } cases[] = {{0, 10000}, {100, 30000}, {5000, kLargest}};
    for (const auto& [loaded, limit] : cases) {
        node_.loadedCount = loaded;
        node_.loadLimit = limit;

        ExtendLoad(node_);

        EXPECT_EQ(node_.loadLimit, limit);
    }
}

TEST_F(LoadProtocol, UnlimitSetsTheLargestLimit) {
    UnlimitLoad(node_);

    EXPECT_EQ(node_.loadLimit, kLargest);
}

TEST_F(LoadProtocol, StopAsksTheLoaderToEndAndLeavesTheRest) {
    node_.loading = 1;

    StopLoad(node_);

    EXPECT_EQ(node_.stopRequested.load(), 1u);
    EXPECT_EQ(node_.loading.load(), 1u);
    EXPECT_EQ(node_.loadLimit, 10000u);
    EXPECT_EQ(node_.loadResult.load(), 0u);
}

// Each change takes the load mutex. Otherwise a change between a loader's test and its sleep
// would be lost.
TEST_F(LoadProtocol, EachChangeIsMadeUnderTheLoadMutex) {
    using Change = void (*)(EventNode&);
    const Change changes[] = {ExtendLoad, UnlimitLoad, StopLoad,
                              [](EventNode& node) { ResetForLoad(node, L""); }};
    for (const Change change : changes) {
        EventNode node(L"System", L"System", 0x006);
        node.loadedCount = 5;
        node.loadLimit = 1;
        std::atomic<bool> changed = false;
        std::thread changer;
        {
            const std::lock_guard lock(node.loadMutex);
            changer = std::thread([&] {
                change(node);
                changed = true;
            });
            EXPECT_TRUE(test::HoldsFor(std::chrono::milliseconds(20), [&] {
                return !changed && node.loadLimit == 1 && node.stopRequested.load() == 0;
            }));
        }
        changer.join();
    }
}

TEST_F(LoadProtocol, ResetEmptiesTheRecordsUnderTheirMutex) {
    Append(node_.recordList, {MakeRecord()});
    std::thread resetter;
    {
        const std::lock_guard lock(node_.recordListMutex);
        resetter = std::thread([this] { ResetForLoad(node_, L""); });
        EXPECT_TRUE(test::HoldsFor(std::chrono::milliseconds(20),
                                   [this] { return node_.recordList.size() == 1; }));
    }
    resetter.join();
    EXPECT_TRUE(node_.recordList.empty());
}

TEST(NearsEnd, BeginsTwoThousandRowsBeforeTheEnd) {
    const struct {
        std::int32_t lastRow;
        std::int32_t rowCount;
        bool nears;
    } cases[] = {
        {9999, 12000, false}, {10000, 12000, true}, {11999, 12000, true}, {0, 12000, false},
        {0, 2000, true},      {0, 2001, false},     {1, 2001, true},      {0, 1999, true},
        {0, 1, true},         {0, 0, true},         {-1, 1999, true},     {-1, 2000, false},
    };
    for (const auto& [lastRow, rowCount, nears] : cases) {
        EXPECT_EQ(NearsEnd(lastRow, rowCount), nears) << lastRow << " of " << rowCount;
    }
}

}  // namespace
}  // namespace tavrin::eventlog
