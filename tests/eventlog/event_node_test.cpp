#include "eventlog/channels/event_node.h"

#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "eventlog/channels/node_flags.h"

namespace tavrin::eventlog {
namespace {

static_assert(!std::is_polymorphic_v<EventNode>);
static_assert(std::is_same_v<decltype(EventNode::done), std::atomic<std::uint8_t>>);
static_assert(std::is_same_v<decltype(EventNode::loading), std::atomic<std::uint8_t>>);
static_assert(std::is_same_v<decltype(EventNode::stopRequested), std::atomic<std::uint8_t>>);
static_assert(std::is_same_v<decltype(EventNode::loadResult), std::atomic<std::uint32_t>>);
static_assert(std::is_same_v<decltype(EventNode::loadedCount), std::atomic<std::uint64_t>>);
static_assert(std::is_same_v<decltype(EventNode::counter), std::uint64_t>);
static_assert(std::is_same_v<decltype(EventNode::loadLimit), std::uint64_t>);
static_assert(std::is_same_v<decltype(EventNode::loaderTime), double>);

TEST(EventNode, KeepsTheNameIdAndFlagsItIsGiven) {
    const EventNode node(L"Operational", L"Foo-Bar/Operational", 0x00A);

    EXPECT_EQ(node.name, L"Operational");
    EXPECT_EQ(node.id, L"Foo-Bar/Operational");
    EXPECT_EQ(node.flags, 0x00Au);
}

TEST(EventNode, StartsWithoutRecordsAndWithoutQuery) {
    const EventNode node(L"System", L"System", 0x006);

    EXPECT_TRUE(node.recordList.empty());
    EXPECT_TRUE(node.searchIndex.keys.empty());
    EXPECT_EQ(node.query, L"");
    EXPECT_EQ(node.counter, 0u);
}

TEST(EventNode, StartsAsNeverLoaded) {
    const EventNode node(L"System", L"System", 0x006);

    EXPECT_EQ(node.done.load(), 0u);
    EXPECT_EQ(node.loadResult.load(), 0u);
    EXPECT_EQ(node.loading.load(), 0u);
    EXPECT_EQ(node.loadedCount.load(), 0u);
    EXPECT_EQ(node.stopRequested.load(), 0u);
}

TEST(EventNode, StartsWithALimitOfTenThousandRecords) {
    const EventNode node(L"System", L"System", 0x006);

    EXPECT_EQ(node.loadLimit, 10000u);
    EXPECT_EQ(node.loaderTime, 0.0);
}

TEST(EventNode, IsAChannelByItsChannelBitAlone) {
    const struct {
        std::uint32_t flags;
        bool channel;
    } cases[] = {{0x002, true},  {0x006, true},  {0x022, true},  {0x003, true}, {0x101, false},
                 {0x041, false}, {0x201, false}, {0x004, false}, {0, false}};
    for (const auto& [flags, channel] : cases) {
        EXPECT_EQ(EventNode(L"", L"", flags).IsChannel(), channel) << std::hex << flags;
    }
}

}  // namespace
}  // namespace tavrin::eventlog
