#pragma once

#include "replay/calls/operation.h"
#include "replay/results/bookmark.h"
#include "replay/results/result_cursor.h"

#include <cstdint>

#include <windows.h>

namespace replay::results {

// The target of a seek: an offset from the origin in the direction of the query.
struct SeekTarget {
    enum class Origin { kFirst, kLast, kCurrent, kBookmark };

    Origin origin{};
    std::int64_t offset = 0;
    bool strict = false;
    const Bookmark* bookmark = nullptr;  // for kBookmark
};

// Moves the cursor to the target. If there is no such event, a strict seek returns 1168 and does
// not move the cursor; any other seek stops at the nearest result. Returns 1168 also if the
// bookmark has no current entry in the cursor's channels.
DWORD Seek(ResultCursor& cursor, const SeekTarget& target, calls::Operation& operation);

// Moves after the bookmarked event of each channel. Returns false if one of them does not exist.
bool GoBehind(ResultCursor& cursor, const Bookmark& bookmark);

}  // namespace replay::results
