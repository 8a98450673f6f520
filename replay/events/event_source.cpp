#include "replay/events/event_source.h"

#include "replay/text/channel_name.h"

namespace replay::events {

EventSource::EventSource(std::wstring_view channel)
    : channel_(channel), foldedChannel_(text::FoldCase(channel)) {}

}  // namespace replay::events
