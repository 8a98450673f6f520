#include "event_source.h"

#include "text.h"

namespace replay {

EventSource::EventSource(std::wstring_view channel)
    : channel_(channel), foldedChannel_(FoldCase(channel)) {}

}  // namespace replay
