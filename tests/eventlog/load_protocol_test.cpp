#include "eventlog/load_protocol.h"

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>

#include <gtest/gtest.h>

#include "eventlog/event_node.h"
#include "eventlog/event_record.h"

namespace tavrin::eventlog {
namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

EventRecordPtr AnyRecord() {
    return std::make_shared<const EventRecord>(1, 1, 1, std::uint8_t{4}, CalendarTime{}, L"P", L"P",
                                               0);
}

class LoadProtocol : public testing::Test {
protected:
    EventNode node_{L"System", L"System", 0x006};
};

TEST_F(LoadProtocol, ResetMakesTheNodeAsNewWithTheQuery) {
    node_.recordList.push_back(AnyRecord());
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
    const EventRecordPtr record = AnyRecord();
    AppendRecords(node_, {record});

    EXPECT_EQ(ResetForLoad(node_, L""), EventRecordList{record});
    EXPECT_EQ(record.use_count(), 1) << "the search index has it still";
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

// Each change waits for the load mutex, and so cannot slip in between a loader's test
// and its sleep.
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
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            EXPECT_FALSE(changed);
            EXPECT_EQ(node.loadLimit, 1u);
            EXPECT_EQ(node.stopRequested.load(), 0u);
        }
        changer.join();
    }
}

TEST_F(LoadProtocol, ResetEmptiesTheRecordsUnderTheirMutex) {
    node_.recordList.push_back(AnyRecord());
    std::thread resetter;
    {
        const std::lock_guard lock(node_.recordListMutex);
        resetter = std::thread([this] { ResetForLoad(node_, L""); });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(node_.recordList.size(), 1u);
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
