#pragma once

#include "replay/calls/operation.h"
#include "replay/events/channel_log.h"
#include "replay/results/selection.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace replay::results {

// Walks the events that a query selects: each once, those of several channels merged by time.
// A walk stands between two events, so that it can go on either way, and sees what is added to
// the logs meanwhile. Not safe on several threads at once.
//
// Functions that take an operation may scan many events that are not selected. They find nothing
// more once the operation is cancelled.
class ResultCursor {
public:
    enum class Direction { kForward, kReverse };

    // Where the walk stands in each channel: before the event of this ordinal.
    using Position = std::vector<std::uint64_t>;

    // Stands before the first event of the direction.
    ResultCursor(std::vector<ChannelSelection> selections, Direction direction);

    Direction ReadingDirection() const { return direction_; }

    // In folded case.
    std::vector<std::wstring> ChannelNames() const;

    // Whether a log was cleared since: the walk is stale then.
    bool IsStale() const;

    // Goes on at the beginning of the logs that were cleared.
    void FollowClearedLogs();

    // Takes up to `most` events of up to `mostUnits` of XML. `tooLarge` tells that the events
    // taken exceeded them; they are passed over all the same, as the service does.
    std::vector<events::EventPlace> Take(std::size_t most, std::uint64_t mostUnits, bool& tooLarge,
                                         calls::Operation& operation);

    // Whether an event follows.
    bool HasMore(calls::Operation& operation);

    // Moves over |offset| events, backward if it is negative; returns how many were there.
    std::uint64_t Move(std::int64_t offset, calls::Operation& operation);

    // Stands before the first event of the direction, or behind the last one.
    void GoToBegin() { GoToEdge(Opposite()); }
    void GoToEnd() { GoToEdge(direction_); }

    // Where the walk stands, and back to it.
    Position Save() const;
    void Return(const Position& position);

    bool Reads(const std::wstring& channel) const { return FindWalk(channel) != npos; }

    // Stands so that the selected event of the record id comes next, all channels at its time. If
    // there is none, stands where the event would be and returns false. The channel must be one
    // that this walk reads.
    bool GoToRecord(const std::wstring& channel, std::uint64_t recordId);

    // Stands behind the record in the log, selected or not; false if it is not there.
    bool GoBehindRecord(const std::wstring& channel, std::uint64_t recordId);

private:
    static constexpr std::size_t npos = SIZE_MAX;

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

    std::optional<Candidate> NextOf(std::size_t walk, Direction direction,
                                    calls::Operation& operation);
    std::optional<Candidate> NextOf(Direction direction, calls::Operation& operation);
    void Pass(const Candidate& candidate, Direction direction);
    std::uint64_t MoveWithin(std::uint64_t count, Direction direction, calls::Operation& operation);
    void GoToEdge(Direction direction);
    Direction Opposite() const;
    std::size_t FindWalk(const std::wstring& channel) const;
    static bool GoTo(Walk& walk, std::uint64_t recordId);
    void AlignOthers(const Walk& current);

    std::vector<Walk> walks_;
    Direction direction_;
};

}  // namespace replay::results
