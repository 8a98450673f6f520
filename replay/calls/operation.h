#pragma once

#include "replay/calls/object.h"
#include "replay/platform/kernel_handle.h"
#include "replay/platform/lock.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

#include <windows.h>

namespace replay::calls {

// Simulated time of a call, in addition to the work of this service.
struct Costs {
    std::chrono::microseconds call{};
    std::chrono::microseconds event{};         // per event that the call handles
    std::chrono::microseconds skippedEvent{};  // per event that a filter skips
};

// The simulated time and the cancellation of one call. Only Cancel may be called on another thread
// than the caller's.
class Operation {
    using Clock = std::chrono::steady_clock;

public:
    Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    ~Operation() {
        if (object_ != nullptr) {
            End();
        }
    }

    // Registers the operation with the object, so that EvtCancel finds it. Does nothing if the
    // object is null or has no pending operations.
    void BeginOn(std::shared_ptr<Object> object);

    // Ends the current wait and all later ones. Any thread.
    void Cancel();
    bool IsCancelled() const { return cancelled_.load(std::memory_order_relaxed); }

    // Wait for this time, or for the signal for at most `longest`. Return at once on Cancel.
    void Wait(std::chrono::milliseconds time);
    void WaitFor(HANDLE signal, std::chrono::milliseconds longest);

    // Add to the time that the call owes. A single cost is much shorter than the shortest sleep, so
    // costs accumulate until Pay.
    void SetCosts(const Costs& costs);
    void OweEvents(std::size_t count) { owed_ += count * costs_.event; }

    // Adds the cost of an event that a filter skipped. Returns false if the operation was
    // cancelled.
    bool PassOver();

    // Waits for the time owed. Returns false if the operation was cancelled.
    bool Pay() { return owed_ > Clock::duration::zero() ? Spend() : !IsCancelled(); }

private:
    void End();
    bool Spend();
    void Sleep(std::chrono::milliseconds time);

    std::shared_ptr<Object> object_;  // null: cannot be cancelled
    Costs costs_;
    Clock::duration owed_{};
    std::atomic<bool> cancelled_{false};
    platform::Lock lock_;
    platform::UniqueKernelHandle wake_;  // guarded by lock_: created by a wait, set by Cancel
};

// The pending operations of an object. Thread-safe.
class PendingOperations {
public:
    // Cancels the operations that are pending now, but no later one.
    void Cancel();

    // Called when an operation begins and when it ends.
    void Add(Operation& operation);
    void Remove(Operation& operation);

private:
    platform::Lock lock_;
    std::vector<Operation*> operations_;  // guarded by lock_
};

}  // namespace replay::calls
