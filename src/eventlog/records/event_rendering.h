#pragma once

#include <cstdint>

#include <windows.h>
#include <winevt.h>

#include "eventlog/records/event_record.h"

namespace tavrin::eventlog {

// Renders one event into a new record at the end of the list. Any thread: each has a
// buffer and a render context of its own. Returns the code of the first render, 0 or
// the service's (122 after a retry with a larger buffer). Throws std::runtime_error,
// with nothing appended, when the thread has no render context or the retry fails.
// The event stays the caller's to close.
[[nodiscard]] std::uint32_t RenderEventRecord(EVT_HANDLE event, EventRecordList& destination);

}  // namespace tavrin::eventlog
