#pragma once

#include "replay/calls/operation.h"
#include "replay/results/bookmark.h"
#include "replay/results/result_cursor.h"

#include <cstdint>

#include <windows.h>

namespace replay::results {

// Where to seek: so many events from the origin, counted in the direction of the query.
struct SeekTarget {
    enum class Origin { kFirst, kLast, kCurrent, kBookmark };

    Origin origin{};
    std::int64_t offset = 0;
    bool strict = false;
    const Bookmark* bookmark = nullptr;  // of kBookmark
};

// Moves the cursor to the target. Fails with 1168 if the target is strict and there is no such
// event, and then leaves the cursor where it was; otherwise stays inside the results.
DWORD Seek(ResultCursor& cursor, const SeekTarget& target, calls::Operation& operation);

// Stands behind the bookmarked event of each channel; false if one of them is not there.
bool GoBehind(ResultCursor& cursor, const Bookmark& bookmark);

}  // namespace replay::results
