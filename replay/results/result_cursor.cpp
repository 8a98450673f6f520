#include "replay/results/result_cursor.h"

#include "replay/text/channel_name.h"

#include <algorithm>
#include <utility>

namespace replay::results {
namespace {

// |offset|, correct for the most negative number too.
std::uint64_t Magnitude(std::int64_t offset) {
    const auto bits = static_cast<std::uint64_t>(offset);
    return offset >= 0 ? bits : ~bits + 1;
}

}  // namespace

ResultCursor::ResultCursor(std::vector<ChannelSelection> selections, Direction direction)
    : direction_(direction) {
    for (ChannelSelection& selection : selections) {
        auto log = selection.channel->Log();
        walks_.push_back({std::move(selection), std::move(log), 0});
    }
    GoToBegin();
}

std::vector<std::wstring> ResultCursor::ChannelNames() const {
    std::vector<std::wstring> names;
    for (const Walk& walk : walks_) {
        names.push_back(walk.selection.channel->FoldedName());
    }
    return names;
}

bool ResultCursor::IsStale() const {
    return std::ranges::any_of(
        walks_, [](const Walk& walk) { return walk.selection.channel->Log() != walk.log; });
}

void ResultCursor::FollowClearedLogs() {
    for (Walk& walk : walks_) {
        auto log = walk.selection.channel->Log();
        if (log == walk.log) {
            continue;
        }
        walk.log = std::move(log);
        walk.gap = 0;
    }
}

std::vector<events::EventPlace> ResultCursor::Take(std::size_t most, std::uint64_t mostUnits,
                                                   bool& tooLarge, calls::Operation& operation) {
    std::vector<events::EventPlace> taken;
    std::uint64_t units = 0;
    while (taken.size() < most) {
        const auto next = NextOf(direction_, operation);
        if (!next) {
            break;
        }
        taken.push_back(walks_[next->walk].log->Place(next->ordinal));
        units += taken.back().source->XmlSize(taken.back().ordinal);
        Pass(*next, direction_);
    }
    tooLarge = units > mostUnits;
    return taken;
}

bool ResultCursor::HasMore(calls::Operation& operation) {
    return NextOf(direction_, operation).has_value();
}

// Finds the next selected event. Moves the gap past skipped events, so they are not tested again.
std::optional<ResultCursor::Candidate> ResultCursor::NextOf(std::size_t index, Direction direction,
                                                            calls::Operation& operation) {
    Walk& walk = walks_[index];
    const bool all = walk.selection.SelectsAll();
    const bool forward = direction == Direction::kForward;
    const std::uint64_t end = forward ? walk.log->Count() : 0;
    for (; forward ? walk.gap < end : walk.gap > end; forward ? ++walk.gap : --walk.gap) {
        const std::uint64_t ordinal = forward ? walk.gap : walk.gap - 1;
        if (all || walk.selection.Selects(*walk.log, ordinal)) {
            return Candidate{index, ordinal, walk.log->Facts(ordinal).time};
        }
        if (!operation.PassOver()) {
            break;
        }
    }
    return std::nullopt;
}

// Returns the earliest of the channels' next events, or the latest in reverse. Ties go by the order
// of the channels, which is reversed too, so that both directions yield the same sequence.
std::optional<ResultCursor::Candidate> ResultCursor::NextOf(Direction direction,
                                                            calls::Operation& operation) {
    std::optional<Candidate> best;
    const bool forward = direction == Direction::kForward;
    for (std::size_t i = 0; i < walks_.size(); ++i) {
        const std::size_t index = forward ? i : walks_.size() - 1 - i;
        const auto next = NextOf(index, direction, operation);
        if (next && (!best || (forward ? next->time < best->time : next->time > best->time))) {
            best = next;
        }
    }
    return best;
}

void ResultCursor::Pass(const Candidate& candidate, Direction direction) {
    walks_[candidate.walk].gap =
        direction == Direction::kForward ? candidate.ordinal + 1 : candidate.ordinal;
}

bool ResultCursor::Move(std::int64_t offset, calls::Operation& operation) {
    const std::uint64_t count = Magnitude(offset);
    return MoveWithin(count, offset >= 0 ? direction_ : Opposite(), operation) == count;
}

std::uint64_t ResultCursor::MoveWithin(std::uint64_t count, Direction direction,
                                       calls::Operation& operation) {
    // The usual case, one channel without a filter, needs no iteration.
    if (walks_.size() == 1 && walks_.front().selection.SelectsAll()) {
        Walk& walk = walks_.front();
        const bool forward = direction == Direction::kForward;
        const std::uint64_t room = forward ? walk.log->Count() - walk.gap : walk.gap;
        const std::uint64_t moved = std::min(count, room);
        walk.gap = forward ? walk.gap + moved : walk.gap - moved;
        return moved;
    }
    std::uint64_t moved = 0;
    for (; moved < count; ++moved) {
        const auto next = NextOf(direction, operation);
        if (!next) {
            break;
        }
        Pass(*next, direction);
    }
    return moved;
}

void ResultCursor::GoToEdge(Direction direction) {
    for (Walk& walk : walks_) {
        walk.gap = direction == Direction::kForward ? walk.log->Count() : 0;
    }
}

ResultCursor::Position ResultCursor::Save() const {
    Position position;
    for (const Walk& walk : walks_) {
        position.push_back(walk.gap);
    }
    return position;
}

void ResultCursor::Return(const Position& position) {
    for (std::size_t i = 0; i < position.size(); ++i) {
        walks_[i].gap = position[i];
    }
}

ResultCursor::Direction ResultCursor::Opposite() const {
    return direction_ == Direction::kForward ? Direction::kReverse : Direction::kForward;
}

std::size_t ResultCursor::FindWalk(const std::wstring& channel) const {
    const auto found = std::ranges::find(walks_, text::FoldCase(channel), [](const Walk& walk) {
        return walk.selection.channel->FoldedName();
    });
    return found == walks_.end() ? npos : static_cast<std::size_t>(found - walks_.begin());
}

bool ResultCursor::GoToRecord(const std::wstring& channel, std::uint64_t recordId) {
    Walk& walk = walks_[FindWalk(channel)];
    const bool found = GoTo(walk, recordId);
    AlignOthers(walk);
    if (found && direction_ == Direction::kReverse) {
        ++walk.gap;
    }
    return found;
}

bool ResultCursor::GoBehindRecord(const std::wstring& channel, std::uint64_t recordId) {
    Walk& walk = walks_[FindWalk(channel)];
    GoTo(walk, recordId);
    const bool isThere = walk.log->FindNumber(recordId).has_value();
    if (isThere) {
        ++walk.gap;
    }
    return isThere;
}

// Moves before the selected event with this record id. If there is none, moves to where it would be
// and returns false.
bool ResultCursor::GoTo(Walk& walk, std::uint64_t recordId) {
    const events::ChannelLog& log = *walk.log;
    if (const auto ordinal = log.FindNumber(recordId)) {
        walk.gap = *ordinal;
        return walk.selection.SelectsAll() || walk.selection.Selects(log, *ordinal);
    }
    const std::uint64_t count = log.Count();
    for (walk.gap = 0; walk.gap < count && log.NumberInLog(walk.gap) < recordId;) {
        ++walk.gap;
    }
    return false;
}

// Moves the other channels to the time of the event after this channel's position.
void ResultCursor::AlignOthers(const Walk& current) {
    const std::uint64_t end = current.log->Count();
    const std::uint64_t time =
        current.gap < end ? current.log->Facts(current.gap).time : UINT64_MAX;
    for (Walk& walk : walks_) {
        if (&walk == &current) {
            continue;
        }
        const std::uint64_t count = walk.log->Count();
        for (walk.gap = 0; walk.gap < count && walk.log->Facts(walk.gap).time < time;) {
            ++walk.gap;
        }
    }
}

}  // namespace replay::results
