#include "replay/results/result_set.h"

#include "replay/results/limits.h"

#include <mutex>
#include <shared_mutex>

namespace replay::results {

bool ResultSet::IsAbout(std::wstring_view foldedChannel) const {
    const std::shared_lock guard(lock_);
    return cursor_.IsAbout(foldedChannel);
}

bool ResultSet::IsReverse() const {
    const std::shared_lock guard(lock_);
    return cursor_.ReadingDirection() == ResultCursor::Direction::kReverse;
}

DWORD ResultSet::Take(std::size_t most, std::vector<events::EventPlace>& events) {
    const std::lock_guard guard(lock_);
    if (cursor_.IsStale()) {
        return ERROR_EVT_QUERY_RESULT_STALE;
    }
    bool tooLarge = false;
    events = cursor_.Take(most, kMostBytesPerCall, tooLarge);
    if (tooLarge) {
        return RPC_S_INVALID_BOUND;
    }
    return events.empty() ? ERROR_NO_MORE_ITEMS : ERROR_SUCCESS;
}

DWORD ResultSet::Seek(ResultCursor::Origin origin, std::int64_t offset, bool strict,
                      const Bookmark* bookmark) {
    const std::lock_guard guard(lock_);
    if (cursor_.IsStale()) {
        return ERROR_EVT_QUERY_RESULT_STALE;
    }
    return cursor_.Seek(origin, offset, strict, bookmark);
}

}  // namespace replay::results
