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

    // Waits for Wake and resets it. Returns false at the deadline.
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

// An event, or a process, which is signalled when it has ended. Each object has its own lock: a
// shared one would order unrelated threads and hide their races.
class Waitable final : public KernelObject {
public:
    Waitable(bool manualReset, bool signalled) : manualReset_(manualReset), signalled_(signalled) {}

    void Set();
    void Reset();

    // Returns whether the object is signalled. Resets an auto-reset object.
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
