#include "replay/events/event_source.h"

#include "replay/text/channel_name.h"

namespace replay {

EventSource::EventSource(std::wstring_view channel)
    : channel_(channel), foldedChannel_(FoldCase(channel)) {}

}  // namespace replay
