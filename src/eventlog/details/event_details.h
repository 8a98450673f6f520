#pragma once

#include <cstdint>
#include <string>

#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {

// Opens an event by its channel and record id. Returns 0 and sets `event`, or a code and leaves it
// untouched: 1168 if the log no longer holds the event, otherwise the service's.
[[nodiscard]] std::uint32_t OpenEventByRecordId(const std::wstring& path, std::uint64_t recordId,
                                                UniqueEvt& event);

// The full text of an event, as its provider words it. Window thread; waits for the
// service. Returns
//   0         text is the provider's message
//   2, 15027  the provider is not registered, or lacks the message: text is made of
//             the event's data
//   1168      the event is gone: text says so
//   other     the service's code; text is left alone
[[nodiscard]] std::uint32_t FormatEventDescription(const std::wstring& path, std::uint64_t recordId,
                                                   std::uint32_t eventId,
                                                   const std::wstring& providerName,
                                                   std::wstring& text);

}  // namespace tavrin::eventlog
