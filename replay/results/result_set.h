#pragma once

#include "replay/calls/object.h"
#include "replay/platform/lock.h"
#include "replay/results/result_cursor.h"

#include <cstddef>
#include <utility>
#include <vector>

#include <windows.h>

namespace replay::results {

// A query handle.
class ResultSet final : public calls::Object {
public:
    explicit ResultSet(ResultCursor cursor) : cursor_(std::move(cursor)) {}

    bool IsAbout(std::wstring_view foldedChannel) const override;
    bool IsReverse() const;

    // The next events: 259 at the end, 15011 when the log was cleared, 1734 when they are too
    // large for one answer.
    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events);
    DWORD Seek(ResultCursor::Origin origin, std::int64_t offset, bool strict,
               const Bookmark* bookmark);

private:
    mutable platform::Lock lock_;
    ResultCursor cursor_;  // guarded by lock_
};

}  // namespace replay::results
