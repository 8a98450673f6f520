#include "replay/events/event_source.h"

#include "replay/text/channel_name.h"

namespace replay::events {

EventSource::EventSource(std::wstring_view channel)
    : channel_(channel), foldedChannel_(text::FoldCase(channel)) {}

std::optional<std::uint64_t> EventSource::FindNumber(std::uint64_t number) const {
    if (!firstNumber_) {
        return Find(number);
    }
    const bool isHere = number >= *firstNumber_ && number - *firstNumber_ < Count();
    return isHere ? std::optional(number - *firstNumber_) : std::nullopt;
}

}  // namespace replay::events
