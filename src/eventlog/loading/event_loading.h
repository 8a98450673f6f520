#pragma once

#include <cstdint>

#include "eventlog/channels/event_node.h"
#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {

// One step of loading a channel, newest event first; loader threads only. The caller
// keeps the query between the steps: empty before the first, which opens it.
//   1 to 128  that many records were appended to the node's record list
//   0         no record was appended; the node's done flag says whether the log has ended
//   -1        the service failed: its code is the node's load result, the query closed
// Throws std::logic_error for a node that is not a channel.
[[nodiscard]] std::int32_t LoadChannelEvents(EventNode& node, UniqueEvt& query);

// Reads and renders the next page of a query. Returns as above, but leaves the query and the node's
// record list untouched.
[[nodiscard]] std::int32_t FetchEventBatch(EventNode& node, EVT_HANDLE query,
                                           EventRecordList& destination);

}  // namespace tavrin::eventlog
