#include "replay/results/subscription.h"

#include "replay/results/limits.h"

#include <mutex>
#include <shared_mutex>
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
    : cursor_(std::move(cursor)), signal_(Duplicate(signal)) {}

bool Subscription::IsAbout(std::wstring_view foldedChannel) const {
    const std::shared_lock guard(lock_);
    return cursor_.IsAbout(foldedChannel);
}

void Subscription::Notify() {
    const std::lock_guard guard(lock_);
    if (notified_) {
        return;
    }
    cursor_.FollowClearedLogs();
    if (!cursor_.HasMore()) {
        return;
    }
    notified_ = true;
    SetEvent(signal_.get());
}

DWORD Subscription::Take(std::size_t most, std::vector<events::EventPlace>& events) {
    const std::lock_guard guard(lock_);
    if (!notified_ && !IsSignalled()) {
        return ERROR_INVALID_OPERATION;
    }
    cursor_.FollowClearedLogs();
    bool tooLarge = false;
    events = cursor_.Take(most, kMostBytesPerCall, tooLarge);
    if (tooLarge) {
        return RPC_S_INVALID_BOUND;
    }
    if (!events.empty()) {
        return ERROR_SUCCESS;
    }
    notified_ = false;
    return ERROR_NO_MORE_ITEMS;
}

// A subscriber may create his event object signalled, to read at once. Testing an auto-reset
// event resets it, so it is set again.
bool Subscription::IsSignalled() const {
    if (WaitForSingleObject(signal_.get(), 0) != WAIT_OBJECT_0) {
        return false;
    }
    SetEvent(signal_.get());
    return true;
}

}  // namespace replay::results
