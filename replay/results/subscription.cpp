#include "replay/results/subscription.h"

#include <mutex>
#include <utility>

namespace replay::results {
namespace {

platform::UniqueKernelHandle Duplicate(HANDLE handle) {
    const HANDLE process = GetCurrentProcess();
    HANDLE duplicate = nullptr;
    DuplicateHandle(process, handle, process, &duplicate, 0, FALSE, DUPLICATE_SAME_ACCESS);
    return platform::UniqueKernelHandle(duplicate);
}

}  // namespace

Subscription::Subscription(ResultCursor cursor, HANDLE signal)
    : Reader(std::move(cursor)), signal_(Duplicate(signal)) {}

void Subscription::Notify() {
    const std::lock_guard guard(lock_);
    if (notified_) {
        return;
    }
    cursor_.FollowClearedLogs();
    calls::Operation looking;
    if (!cursor_.HasMore(looking)) {
        return;
    }
    notified_ = true;
    SetEvent(signal_.get());
}

DWORD Subscription::Take(std::size_t most, std::vector<events::EventPlace>& events,
                         calls::Operation& operation) {
    const std::lock_guard guard(lock_);
    if (!notified_ && !IsSignalled()) {
        return ERROR_INVALID_OPERATION;
    }
    cursor_.FollowClearedLogs();
    const DWORD error = Read(most, events, operation);
    if (error == ERROR_NO_MORE_ITEMS) {
        notified_ = false;
    }
    return error;
}

// A subscriber may create its event object signalled in order to read at once. Waiting on an
// auto-reset event resets it, so it must be set again.
bool Subscription::IsSignalled() const {
    if (WaitForSingleObject(signal_.get(), 0) != WAIT_OBJECT_0) {
        return false;
    }
    SetEvent(signal_.get());
    return true;
}

}  // namespace replay::results
