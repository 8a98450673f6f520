#include "replay/results/result_cursor.h"

#include "replay/text/channel_name.h"

#include <algorithm>
#include <utility>

namespace replay::results {
namespace {

// |offset|, right for the most negative number, too.
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
    GoToEdge(Opposite());
}

bool ResultCursor::IsAbout(std::wstring_view foldedChannel) const {
    return std::ranges::any_of(walks_, [foldedChannel](const Walk& walk) {
        return walk.selection.channel->FoldedName() == foldedChannel;
    });
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

std::vector<events::EventPlace> ResultCursor::Take(std::size_t most, std::uint64_t mostBytes,
                                                   bool& tooLarge) {
    std::vector<events::EventPlace> taken;
    std::uint64_t bytes = 0;
    while (taken.size() < most) {
        const auto next = NextOf(direction_);
        if (!next) {
            break;
        }
        taken.push_back(walks_[next->walk].log->Place(next->ordinal));
        bytes += taken.back().source->XmlSize(taken.back().ordinal);
        Pass(*next, direction_);
    }
    tooLarge = bytes > mostBytes;
    return taken;
}

bool ResultCursor::HasMore() {
    return NextOf(direction_).has_value();
}

DWORD ResultCursor::Seek(Origin origin, std::int64_t offset, bool strict,
                         const Bookmark* bookmark) {
    switch (origin) {
        case Origin::kFirst: return SeekFromEdge(true, offset, strict);
        case Origin::kLast: return SeekFromEdge(false, offset, strict);
        case Origin::kCurrent: return SeekFromCurrent(offset, strict);
        case Origin::kBookmark: return SeekFromBookmark(*bookmark, offset, strict);
    }
    return ERROR_INVALID_PARAMETER;
}

void ResultCursor::GoToEnd() {
    GoToEdge(direction_);
}

bool ResultCursor::GoBehind(const Bookmark& bookmark) {
    bool found = true;
    for (const BookmarkEntry& entry : bookmark.Entries()) {
        Walk* walk = FindWalk(entry.channel);
        if (walk == nullptr) {
            continue;
        }
        GoTo(*walk, entry.recordId);
        const bool isThere = walk->log->Find(entry.recordId).has_value();
        if (isThere) {
            ++walk->gap;
        }
        found = found && isThere;
    }
    return found;
}

// The first event from the gap on that is selected.
std::optional<ResultCursor::Candidate> ResultCursor::NextOf(std::size_t index,
                                                            Direction direction) const {
    const Walk& walk = walks_[index];
    const bool all = walk.selection.SelectsAll();
    const bool forward = direction == Direction::kForward;
    const std::uint64_t end = forward ? walk.log->Count() : 0;
    for (std::uint64_t gap = walk.gap; forward ? gap < end : gap > end; forward ? ++gap : --gap) {
        const std::uint64_t ordinal = forward ? gap : gap - 1;
        if (all || walk.selection.Selects(*walk.log, ordinal)) {
            return Candidate{index, ordinal, walk.log->Facts(ordinal).time};
        }
    }
    return std::nullopt;
}

// Of all channels' next events the one that is earliest, or latest in reverse. At equal times the
// channels' own order decides, turned round in reverse so that both ways meet the same events.
std::optional<ResultCursor::Candidate> ResultCursor::NextOf(Direction direction) const {
    std::optional<Candidate> best;
    const bool forward = direction == Direction::kForward;
    for (std::size_t i = 0; i < walks_.size(); ++i) {
        const std::size_t index = forward ? i : walks_.size() - 1 - i;
        const auto next = NextOf(index, direction);
        if (next && (!best || (forward ? next->time < best->time : next->time > best->time))) {
            best = next;
        }
    }
    return best;
}

bool ResultCursor::Step(Direction direction) {
    const auto next = NextOf(direction);
    if (next) {
        Pass(*next, direction);
    }
    return next.has_value();
}

void ResultCursor::Pass(const Candidate& candidate, Direction direction) {
    walks_[candidate.walk].gap =
        direction == Direction::kForward ? candidate.ordinal + 1 : candidate.ordinal;
}

// Moves over |offset| events; returns how many were there.
std::uint64_t ResultCursor::Move(std::int64_t offset) {
    return MoveWithin(Magnitude(offset), offset >= 0 ? direction_ : Opposite());
}

std::uint64_t ResultCursor::MoveWithin(std::uint64_t count, Direction direction) {
    // One channel unfiltered, the usual case, needs no walking.
    if (walks_.size() == 1 && walks_.front().selection.SelectsAll()) {
        Walk& walk = walks_.front();
        const bool forward = direction == Direction::kForward;
        const std::uint64_t room = forward ? walk.log->Count() - walk.gap : walk.gap;
        const std::uint64_t moved = std::min(count, room);
        walk.gap = forward ? walk.gap + moved : walk.gap - moved;
        return moved;
    }
    std::uint64_t moved = 0;
    while (moved < count && Step(direction)) {
        ++moved;
    }
    return moved;
}

void ResultCursor::GoToEdge(Direction direction) {
    for (Walk& walk : walks_) {
        walk.gap = direction == Direction::kForward ? walk.log->Count() : 0;
    }
}

ResultCursor::Gaps ResultCursor::SaveGaps() const {
    Gaps gaps;
    for (const Walk& walk : walks_) {
        gaps.push_back(walk.gap);
    }
    return gaps;
}

void ResultCursor::RestoreGaps(const Gaps& gaps) {
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        walks_[i].gap = gaps[i];
    }
}

ResultCursor::Direction ResultCursor::Opposite() const {
    return direction_ == Direction::kForward ? Direction::kReverse : Direction::kForward;
}

DWORD ResultCursor::SeekFromEdge(bool first, std::int64_t offset, bool strict) {
    const Gaps before = SaveGaps();
    GoToEdge(first ? Opposite() : direction_);
    if (!first) {
        Step(Opposite());  // onto the last event
    }
    return Settle(Move(offset) == Magnitude(offset), strict, before);
}

DWORD ResultCursor::SeekFromCurrent(std::int64_t offset, bool strict) {
    const Gaps before = SaveGaps();
    const bool found = Move(offset) == Magnitude(offset);
    // Not to move is no matter of whether an event follows.
    return offset == 0 ? ERROR_SUCCESS : Settle(found, strict, before);
}

// A bookmarked event that is not among the results counts as a position between two of them:
// offsets 0 and 1 both mean the next one.
DWORD ResultCursor::SeekFromBookmark(const Bookmark& bookmark, std::int64_t offset, bool strict) {
    const auto current = bookmark.Current();
    Walk* walk = current ? FindWalk(current->channel) : nullptr;
    if (walk == nullptr) {
        return ERROR_NOT_FOUND;
    }
    const Gaps before = SaveGaps();
    const bool found = GoTo(*walk, current->recordId);
    if (!found && strict) {
        RestoreGaps(before);
        return ERROR_NOT_FOUND;
    }
    AlignOthers(*walk);
    if (found && direction_ == Direction::kReverse) {
        ++walk->gap;  // the event itself comes next
    }
    if (!found && offset > 0) {
        --offset;
    }
    return Settle(Move(offset) == Magnitude(offset), strict, before);
}

// Ends a seek: stands on an event, or, beyond the ends, on the last one inside. A strict seek to
// an event that does not exist moves nothing.
DWORD ResultCursor::Settle(bool found, bool strict, const Gaps& before) {
    if (found && HasMore()) {
        return ERROR_SUCCESS;
    }
    if (strict) {
        RestoreGaps(before);
        return ERROR_NOT_FOUND;
    }
    if (!HasMore()) {
        Step(Opposite());
    }
    return ERROR_SUCCESS;
}

ResultCursor::Walk* ResultCursor::FindWalk(const std::wstring& channel) {
    const auto found = std::ranges::find(walks_, text::FoldCase(channel), [](const Walk& walk) {
        return walk.selection.channel->FoldedName();
    });
    return found == walks_.end() ? nullptr : &*found;
}

// Stands before the selected event of the record id. If there is none, stands where it would be
// and returns false.
bool ResultCursor::GoTo(Walk& walk, std::uint64_t recordId) {
    const events::ChannelLog& log = *walk.log;
    if (const auto ordinal = log.Find(recordId)) {
        walk.gap = *ordinal;
        return walk.selection.SelectsAll() || walk.selection.Selects(log, *ordinal);
    }
    const std::uint64_t count = log.Count();
    for (walk.gap = 0; walk.gap < count && log.Facts(walk.gap).recordId < recordId;) {
        ++walk.gap;
    }
    return false;
}

// Brings the other channels to the moment of the event that this one stands before.
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
