#include "base/chunked_list.h"

#include <cstddef>
#include <memory>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

namespace tavrin::base {
namespace {

using Numbers = ChunkedList<std::size_t>;

constexpr std::size_t kChunk = Numbers::kChunkSize;

// Appends the list's own size, `count` times.
void Grow(Numbers& list, std::size_t count) {
    list.ReserveMore(count);
    for (std::size_t i = 0; i < count; ++i) {
        list.Append(list.size());
    }
}

void ExpectNumbers(const Numbers& list, std::size_t count) {
    ASSERT_EQ(list.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(list[i], i);
    }
}

TEST(ChunkedList, BeginsEmpty) {
    const Numbers list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
}

TEST(ChunkedList, KeepsItsElementsInOrder) {
    Numbers list;
    Grow(list, 1);
    Grow(list, kChunk - 1);
    Grow(list, 2 * kChunk + 1);
    EXPECT_FALSE(list.empty());
    ExpectNumbers(list, 3 * kChunk + 1);
}

TEST(ChunkedList, NeverMovesAnElement) {
    Numbers list;
    Grow(list, 1);
    const std::size_t* const first = &list[0];
    Grow(list, 10 * kChunk);
    EXPECT_EQ(&list[0], first);
}

TEST(ChunkedList, GivesTheRestOfAChunk) {
    Numbers list;
    Grow(list, kChunk + 3);
    EXPECT_EQ(list.ChunkFrom(0).size(), kChunk);
    EXPECT_EQ(list.ChunkFrom(kChunk - 1).size(), 1u);
    EXPECT_EQ(list.ChunkFrom(kChunk).size(), 3u);
    EXPECT_EQ(list.ChunkFrom(kChunk + 1).front(), kChunk + 1);
}

TEST(ChunkedList, AFollowerHasWhatItTookOver) {
    Numbers list;
    Numbers follower;
    Grow(list, 5);
    follower.Follow(list);
    Grow(list, 3 * kChunk);
    ExpectNumbers(follower, 5);

    follower.Follow(list);
    ExpectNumbers(follower, 3 * kChunk + 5);
    EXPECT_EQ(&follower[kChunk], &list[kChunk]) << "elements are shared, not copied";
}

TEST(ChunkedList, AFollowerKeepsTheElementsAlive) {
    ChunkedList<std::shared_ptr<int>> follower;
    std::weak_ptr<int> element;
    {
        ChunkedList<std::shared_ptr<int>> list;
        const auto number = std::make_shared<int>(7);
        element = number;
        list.ReserveMore(1);
        list.Append(number);
        follower.Follow(list);
    }
    EXPECT_EQ(*follower[0], 7);
    follower = {};
    EXPECT_TRUE(element.expired());
}

TEST(ChunkedList, IsEmptyOnceItWasMoved) {
    Numbers list;
    Grow(list, 3);
    Numbers other(std::move(list));
    ExpectNumbers(other, 3);
    EXPECT_TRUE(list.empty());  // NOLINT(bugprone-use-after-move)
    list = std::move(other);
    ExpectNumbers(list, 3);
    EXPECT_TRUE(other.empty());  // NOLINT(bugprone-use-after-move)
}

// For the thread sanitizer: a follower is read while the list grows.
TEST(ChunkedList, AFollowerCanBeReadWhileTheListGrows) {
    Numbers list;
    Numbers follower;
    Grow(list, kChunk / 2);
    follower.Follow(list);
    std::thread grower([&] { Grow(list, 4 * kChunk); });
    ExpectNumbers(follower, kChunk / 2);
    grower.join();
}

}  // namespace
}  // namespace tavrin::base
