#include "base/thread_slot.h"

#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

namespace tavrin::base {
namespace {

std::atomic<int> g_made;
std::atomic<int> g_destroyed;
std::atomic<int> g_destroyedSound;

// Its destructor checks that the object is still intact.
struct Witness {
    Witness() : self(this) { ++g_made; }
    ~Witness() {
        ++g_destroyed;
        g_destroyedSound += self == this;
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;

    Witness* self;
};

class ThreadSlotTest : public testing::Test {
protected:
    ThreadSlotTest() { g_made = g_destroyed = g_destroyedSound = 0; }
};

TEST_F(ThreadSlotTest, MakesNothingUntilAsked) {
    { const ThreadSlot<Witness> slot; }

    EXPECT_EQ(g_made, 0);
}

TEST_F(ThreadSlotTest, AlwaysGivesAThreadTheSameObject) {
    ThreadSlot<Witness> slot;

    EXPECT_EQ(&slot.Get(), &slot.Get());
    EXPECT_EQ(g_made, 1);
}

TEST_F(ThreadSlotTest, DestroysAThreadsObjectWhenTheThreadEnds) {
    ThreadSlot<Witness> slot;
    for (int threads = 1; threads <= 20; ++threads) {
        std::thread([&slot] { slot.Get(); }).join();
        EXPECT_EQ(g_destroyed, threads);
    }
    EXPECT_EQ(g_made, 20);
    EXPECT_EQ(g_destroyedSound, 20);
}

TEST_F(ThreadSlotTest, KeepsTheObjectsOfThreadsApart) {
    ThreadSlot<Witness> slot;
    Witness* const own = &slot.Get();
    std::thread([&] { EXPECT_NE(&slot.Get(), own); }).join();

    EXPECT_EQ(&slot.Get(), own);
    EXPECT_EQ(g_destroyed, 1);
}

TEST_F(ThreadSlotTest, DestroysWhatIsLeftWithTheSlot) {
    {
        ThreadSlot<Witness> slot;
        slot.Get();
    }
    EXPECT_EQ(g_destroyed, 1);
    EXPECT_EQ(g_destroyedSound, 1);
}

}  // namespace
}  // namespace tavrin::base
