#include "replay/results/seek.h"

namespace replay::results {
namespace {

class Seeker {
public:
    Seeker(ResultCursor& cursor, const SeekTarget& target, calls::Operation& operation)
        : cursor_(cursor), target_(target), operation_(operation), before_(cursor.Save()) {}

    DWORD Run() {
        switch (target_.origin) {
            case SeekTarget::Origin::kFirst: cursor_.GoToBegin(); break;
            case SeekTarget::Origin::kLast:
                cursor_.GoToEnd();
                cursor_.Move(-1, operation_);  // before the last event
                break;
            case SeekTarget::Origin::kCurrent: break;
            case SeekTarget::Origin::kBookmark: return FromBookmark();
        }
        const bool found = cursor_.Move(target_.offset, operation_);
        // Offset 0 from the current position succeeds even if no event follows.
        const bool stays = target_.origin == SeekTarget::Origin::kCurrent && target_.offset == 0;
        return stays ? ERROR_SUCCESS : Settle(found);
    }

private:
    // A bookmarked event that is not among the results is a position between two of them: offsets 0
    // and 1 both mean the next one.
    DWORD FromBookmark() {
        const auto current = target_.bookmark->Current();
        if (!current || !cursor_.Reads(current->channel)) {
            return ERROR_NOT_FOUND;
        }
        const bool found = cursor_.GoToRecord(current->channel, current->recordId);
        if (!found && target_.strict) {
            cursor_.Return(before_);
            return ERROR_NOT_FOUND;
        }
        const bool countsTheGap = !found && target_.offset > 0;
        const std::int64_t offset = countsTheGap ? target_.offset - 1 : target_.offset;
        return Settle(cursor_.Move(offset, operation_));
    }

    // Ends a seek. Beyond an end, moves back to the last event inside. A strict seek to an event
    // that does not exist restores the position.
    DWORD Settle(bool found) {
        if (found && cursor_.HasMore(operation_)) {
            return ERROR_SUCCESS;
        }
        if (target_.strict) {
            cursor_.Return(before_);
            return ERROR_NOT_FOUND;
        }
        if (!cursor_.HasMore(operation_)) {
            cursor_.Move(-1, operation_);
        }
        return ERROR_SUCCESS;
    }

    ResultCursor& cursor_;
    const SeekTarget& target_;
    calls::Operation& operation_;
    const ResultCursor::Position before_;
};

}  // namespace

DWORD Seek(ResultCursor& cursor, const SeekTarget& target, calls::Operation& operation) {
    return Seeker(cursor, target, operation).Run();
}

bool GoBehind(ResultCursor& cursor, const Bookmark& bookmark) {
    bool found = true;
    for (const BookmarkEntry& entry : bookmark.Entries()) {
        if (cursor.Reads(entry.channel)) {
            found = cursor.GoBehindRecord(entry.channel, entry.recordId) && found;
        }
    }
    return found;
}

}  // namespace replay::results
