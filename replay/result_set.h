#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "lock.h"
#include "object.h"
#include "result_cursor.h"

namespace replay {

// A query handle.
class ResultSet final : public Object {
public:
    explicit ResultSet(ResultCursor cursor) : cursor_(std::move(cursor)) {}

    bool IsAbout(std::wstring_view foldedChannel) const override;
    bool IsReverse() const;

    // The next events: 259 at the end, 15011 when the log was cleared, 1734 when they are too
    // large for one answer.
    DWORD Take(std::size_t most, std::vector<EventPlace>& events);
    DWORD Seek(ResultCursor::Origin origin, std::int64_t offset, bool strict,
               const Bookmark* bookmark);

private:
    mutable Lock lock_;
    ResultCursor cursor_;  // guarded by lock_
};

// What a query or a subscription is to read: 15007, 5, 15022, 15001 and 15008 where they belong.
// With `tolerate` channels that cannot be read are left out, unless none is left.
struct SelectionResult {
    std::vector<ChannelSelection> selections;
    DWORD error = ERROR_SUCCESS;
};
SelectionResult SelectChannels(const wchar_t* path, const wchar_t* query, bool tolerate);

// Why this thread's last query could not be read; empty if it could.
std::wstring LastQueryError();

}  // namespace replay
