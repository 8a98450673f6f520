#include "replay/results/result_set.h"

#include <mutex>

namespace replay::results {

DWORD ResultSet::Take(std::size_t most, std::vector<events::EventPlace>& events,
                      calls::Operation& operation) {
    const std::lock_guard guard(lock_);
    return cursor_.IsStale() ? ERROR_EVT_QUERY_RESULT_STALE : Read(most, events, operation);
}

DWORD ResultSet::SeekTo(const SeekTarget& target, calls::Operation& operation) {
    const std::lock_guard guard(lock_);
    if (cursor_.IsStale()) {
        return ERROR_EVT_QUERY_RESULT_STALE;
    }
    const ResultCursor::Position before = cursor_.Save();
    const DWORD error = Seek(cursor_, target, operation);
    if (!operation.Pay()) {
        cursor_.Return(before);
        return ERROR_CANCELLED;
    }
    return error;
}

}  // namespace replay::results
