#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <windows.h>

#include "support/recording.h"
#include "window/controls/list_reader.h"

namespace tavrin::test {

// What a recording's events look like behind the filters, computed without the program's code:
// calendar arithmetic of the standard library, and queries put together in another way.

using UtcTime = std::chrono::sys_seconds;
using LocalTime = std::chrono::local_seconds;

// What the service is asked for.
struct ServerFilter {
    std::set<std::wstring> sources = {};  // empty: all
    std::optional<UtcTime> from = {};     // inclusive
    std::optional<UtcTime> until = {};    // exclusive

    bool IsEmpty() const { return sources.empty() && !from && !until; }
};

// Minutes east of UTC.
struct ZoneOffsets {
    std::chrono::minutes shown;   // of the times in the list: the one of today, for all of them
    std::chrono::minutes chosen;  // of the times in the pickers: the one of the chosen time
};

// The offsets of this computer's zone, for times around the given one.
ZoneOffsets OffsetsOfThisZone(UtcTime around);

// The query that the service gets; "*" when nothing is filtered.
std::wstring ExpectedQuery(const std::wstring& channel, const ServerFilter& filter);

UtcTime TimeOf(const RecordedEvent& event);
SYSTEMTIME FieldsOf(LocalTime time);
LocalTime LocalTimeOf(const SYSTEMTIME& fields);

// Whether the service finds an event, and whether a text in the filter edit leaves it shown.
bool IsFound(const RecordedEvent& event, const ServerFilter& filter);
bool IsShown(const RecordedEvent& event, const std::wstring& text, std::chrono::minutes offset);

// Whether a text holds another; only the letters A to Z match both cases.
bool Holds(const std::wstring& text, const std::wstring& part);

RowCells ExpectedCells(const RecordedEvent& event, std::chrono::minutes offset);

// The node's name with what narrows its events.
std::wstring ExpectedSummary(const std::wstring& name, std::size_t sources, bool hasRange);
std::wstring ExpectedSourcesCaption(std::size_t sources);

}  // namespace tavrin::test
