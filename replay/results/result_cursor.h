#pragma once

#include "replay/events/channel_log.h"
#include "replay/recording/channel.h"
#include "replay/results/bookmark.h"
#include "replay/results/selection.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <windows.h>

namespace replay::results {

// Walks the events that a query selects: each once, those of several channels merged by time.
// A walk stands between two events, so that it can go on either way, and sees what is added to
// the logs meanwhile. Not safe on several threads at once.
class ResultCursor {
public:
    enum class Direction { kForward, kReverse };
    enum class Origin { kFirst, kLast, kCurrent, kBookmark };

    // Stands before the first event of the direction.
    ResultCursor(std::vector<ChannelSelection> selections, Direction direction);

    Direction ReadingDirection() const { return direction_; }
    bool IsAbout(std::wstring_view foldedChannel) const;

    // Whether a log was cleared, so that this walk leads nowhere.
    bool IsStale() const;

    // Goes on at the beginning of the logs that were cleared.
    void FollowClearedLogs();

    // Takes up to `most` events of up to `mostBytes` of XML. `tooLarge` tells that the events
    // taken exceeded the bytes; they are passed over all the same, as the service does.
    std::vector<events::EventPlace> Take(std::size_t most, std::uint64_t mostBytes, bool& tooLarge);

    // Whether an event follows.
    bool HasMore();

    // Moves by `offset` events from the origin, counted in the direction of the walk. Fails with
    // 1168 when `strict` and there is no such event; otherwise stays inside the results.
    DWORD Seek(Origin origin, std::int64_t offset, bool strict, const Bookmark* bookmark);

    // Stands behind the last event, or behind the bookmarked one (false: it is not there).
    void GoToEnd();
    bool GoBehind(const Bookmark& bookmark);

private:
    // A channel's part of the walk, and the gap where it stands: before the event of this ordinal.
    struct Walk {
        ChannelSelection selection;
        std::shared_ptr<events::ChannelLog> log;
        std::uint64_t gap = 0;
    };
    // An event that one of the walks comes to next.
    struct Candidate {
        std::size_t walk = 0;
        std::uint64_t ordinal = 0;
        std::uint64_t time = 0;
    };
    using Gaps = std::vector<std::uint64_t>;

    std::optional<Candidate> NextOf(std::size_t walk, Direction direction) const;
    std::optional<Candidate> NextOf(Direction direction) const;
    bool Step(Direction direction);
    void Pass(const Candidate& candidate, Direction direction);
    std::uint64_t Move(std::int64_t offset);
    std::uint64_t MoveWithin(std::uint64_t count, Direction direction);
    void GoToEdge(Direction direction);
    Gaps SaveGaps() const;
    void RestoreGaps(const Gaps& gaps);
    Direction Opposite() const;

    DWORD SeekFromEdge(bool first, std::int64_t offset, bool strict);
    DWORD SeekFromCurrent(std::int64_t offset, bool strict);
    DWORD SeekFromBookmark(const Bookmark& bookmark, std::int64_t offset, bool strict);
    DWORD Settle(bool found, bool strict, const Gaps& before);
    Walk* FindWalk(const std::wstring& channel);
    bool GoTo(Walk& walk, std::uint64_t recordId);
    void AlignOthers(const Walk& current);

    std::vector<Walk> walks_;
    Direction direction_;
};

}  // namespace replay::results
