#pragma once

#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

#include "kernel_object.h"

namespace native {

// A thread that waits for objects.
class Waiter {
public:
    void Wake();

    // Waits until it is woken, and is as if it had not been. False when the time is up.
    template <typename Deadline>
    bool WaitUntil(const Deadline& deadline) {
        std::unique_lock lock(mutex_);
        return condition_.wait_until(lock, deadline,
                                     [this] { return std::exchange(woken_, false); });
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool woken_ = false;  // guarded by mutex_
};

// An object that is signalled or not; an event, or a process that has ended. Each has a lock of
// its own: one for all would order what threads do that have nothing to do with each other, and
// hide their races.
class Waitable final : public KernelObject {
public:
    Waitable(bool manualReset, bool signalled) : manualReset_(manualReset), signalled_(signalled) {}

    void Set();
    void Reset();

    // Whether it is signalled; resets an object that is not reset by hand.
    bool Take();

    void AddWaiter(Waiter& waiter);
    void RemoveWaiter(Waiter& waiter);

private:
    std::mutex mutex_;
    const bool manualReset_;
    bool signalled_;                // guarded by mutex_
    std::vector<Waiter*> waiters_;  // guarded by mutex_
};

}  // namespace native
