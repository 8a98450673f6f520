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

// What a call costs besides the work that this service does.
struct Costs {
    std::chrono::microseconds call{};
    std::chrono::microseconds event{};         // for each event that the call handles
    std::chrono::microseconds skippedEvent{};  // for each event that a filter passes over
};

// One call: the time that it takes, and whether it was cancelled. Only Cancel may be called from
// other threads than the caller's.
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

    // Registers the operation with the object, where it can be cancelled. Does nothing if the
    // object is null or never has operations that wait.
    void BeginOn(std::shared_ptr<Object> object);

    // Any thread: ends what the operation waits for.
    void Cancel();
    bool IsCancelled() const { return cancelled_.load(std::memory_order_relaxed); }

    // Wait for the time to pass, or for the signal; end at once when the operation is cancelled.
    void Wait(std::chrono::milliseconds time);
    void WaitFor(HANDLE signal, std::chrono::milliseconds longest);

    // Add to the time that the call owes. Single costs are far shorter than the shortest sleep, so
    // they add up until they are paid.
    void SetCosts(const Costs& costs);
    void OweEvents(std::size_t count) { owed_ += count * costs_.event; }

    // Notes that a filter passed over an event. Returns false if the operation was cancelled.
    bool PassOver();

    // Spends the time owed. Returns false if the operation was cancelled.
    bool Pay() { return owed_ > Clock::duration::zero() ? Spend() : !IsCancelled(); }

private:
    void End();
    bool Spend();
    void Sleep(std::chrono::milliseconds time);

    std::shared_ptr<Object> object_;  // null: nobody can cancel
    Costs costs_;
    Clock::duration owed_{};
    std::atomic<bool> cancelled_{false};
    platform::Lock lock_;
    platform::UniqueKernelHandle wake_;  // guarded by lock_: set when cancelled; made by a wait
};

// The operations under way on an object. Safe on any thread.
class PendingOperations {
public:
    // Cancels the operations that are under way now, and no later one.
    void Cancel();

    // An operation is listed from its beginning to its end.
    void Add(Operation& operation);
    void Remove(Operation& operation);

private:
    platform::Lock lock_;
    std::vector<Operation*> operations_;  // guarded by lock_
};

}  // namespace replay::calls
