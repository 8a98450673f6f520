#pragma once

#include <cstdint>

#include <windows.h>
#include <winevt.h>

#include "eventlog/records/event_record.h"

namespace tavrin::eventlog {

// Appends a record of the event to the list. Any thread: each has its own buffer and render
// context. Returns the code of the first render (122 if a retry with a larger buffer succeeded).
// Throws std::runtime_error and appends nothing if the thread has no render context or the retry
// fails. The caller closes the event.
[[nodiscard]] std::uint32_t RenderEventRecord(EVT_HANDLE event, EventRecordList& destination);

}  // namespace tavrin::eventlog
