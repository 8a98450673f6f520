#include "replay/results/reader.h"

#include "replay/results/limits.h"

#include <algorithm>
#include <utility>

namespace replay::results {

Reader::Reader(ResultCursor cursor)
    : cursor_(std::move(cursor)),
      foldedChannels_(cursor_.ChannelNames()),
      reverse_(cursor_.ReadingDirection() == ResultCursor::Direction::kReverse) {}

bool Reader::IsAbout(std::wstring_view foldedChannel) const {
    return std::ranges::find(foldedChannels_, foldedChannel) != foldedChannels_.end();
}

DWORD Reader::Read(std::size_t most, std::vector<events::EventPlace>& events,
                   calls::Operation& operation) {
    const ResultCursor::Position before = cursor_.Save();
    bool tooLarge = false;
    events = cursor_.Take(most, kMostUnitsPerCall, tooLarge, operation);
    operation.OweEvents(events.size());
    if (!operation.Pay()) {
        cursor_.Return(before);
        return ERROR_CANCELLED;
    }
    if (tooLarge) {
        return RPC_S_INVALID_BOUND;
    }
    return events.empty() ? ERROR_NO_MORE_ITEMS : ERROR_SUCCESS;
}

}  // namespace replay::results
