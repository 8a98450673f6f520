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

// Iterates over the events that a query selects, each once. Events of several channels are merged
// by time. The cursor is between two events and can move either way. It sees events that are
// appended to the logs. Not thread-safe.
//
// Functions with an operation may scan many unselected events. They find nothing more after the
// operation is cancelled.
class ResultCursor {
public:
    enum class Direction { kForward, kReverse };

    // The position in each channel: before the event of this ordinal.
    using Position = std::vector<std::uint64_t>;

    // Starts before the first event in this direction.
    ResultCursor(std::vector<ChannelSelection> selections, Direction direction);

    Direction ReadingDirection() const { return direction_; }

    // The names are in folded case.
    std::vector<std::wstring> ChannelNames() const;

    // Whether a log has been cleared, which invalidates the cursor.
    bool IsStale() const;

    // Continues at the beginning of the new logs of cleared channels.
    void FollowClearedLogs();

    // Takes up to `most` events. Sets `tooLarge` if their XmlSize exceeds `mostUnits` in total;
    // they are skipped nevertheless, as Windows does.
    std::vector<events::EventPlace> Take(std::size_t most, std::uint64_t mostUnits, bool& tooLarge,
                                         calls::Operation& operation);

    // Whether another event follows.
    bool HasMore(calls::Operation& operation);

    // Moves over |offset| events, backward if it is negative. Stops and returns false at the end.
    bool Move(std::int64_t offset, calls::Operation& operation);

    // Move before the first event in the direction, or after the last one.
    void GoToBegin() { GoToEdge(Opposite()); }
    void GoToEnd() { GoToEdge(direction_); }

    // Save the position and restore it.
    Position Save() const;
    void Return(const Position& position);

    bool Reads(const std::wstring& channel) const { return FindWalk(channel) != npos; }

    // Moves before the selected event with this record id, in all channels by its time. If there is
    // none, moves to where it would be and returns false. The channel must be one of the cursor's.
    bool GoToRecord(const std::wstring& channel, std::uint64_t recordId);

    // Moves after this record in its log, selected or not. Returns false if it does not exist.
    bool GoBehindRecord(const std::wstring& channel, std::uint64_t recordId);

private:
    static constexpr std::size_t npos = SIZE_MAX;

    // The cursor's position in one channel: before the event of this ordinal.
    struct Walk {
        ChannelSelection selection;
        std::shared_ptr<events::ChannelLog> log;
        std::uint64_t gap = 0;
    };
    // The next event of one channel.
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
