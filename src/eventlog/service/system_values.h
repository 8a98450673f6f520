#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <windows.h>
#include <winevt.h>

#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {

inline constexpr std::size_t kSystemValuesBytes = 4096;

// A zero-filled buffer for the system values of one event.
using SystemValuesBuffer = std::vector<std::byte>;

// The outcome of rendering an event. The codes differ if the buffer was too small (122) and the
// service was asked again with a larger one. A code can be 0 although the render failed.
struct RenderOutcome {
    bool rendered;  // the last render succeeded
    std::uint32_t firstCode;
    std::uint32_t lastCode;
};

// The system values that a record is made of.
struct SystemValues {
    // In the buffer, with a terminator behind it; empty when absent.
    std::wstring_view providerName;
    std::uint16_t eventId;
    std::uint8_t level;  // 0 when absent
    std::uint64_t keywords;
    FILETIME timeCreated;
    std::uint64_t recordId;
    std::uint32_t processId;
};

// A render context for the system values. Null on failure; GetLastError has the code.
[[nodiscard]] UniqueEvt CreateSystemValuesContext();

// Renders an event's system values. The buffer grows if the service asks for more, and never
// shrinks.
[[nodiscard]] RenderOutcome RenderSystemValues(EVT_HANDLE context, EVT_HANDLE event,
                                               SystemValuesBuffer& buffer);

// Reads the values in a buffer; all are empty if nothing was rendered into it. The result points
// into the buffer.
SystemValues ReadSystemValues(const SystemValuesBuffer& buffer);

}  // namespace tavrin::eventlog
