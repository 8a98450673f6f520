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

// Computes what the filters show of a recording without the program's code: with the calendar of
// the standard library and another way of building queries.

using UtcTime = std::chrono::sys_seconds;
using LocalTime = std::chrono::local_seconds;

// The filters that are part of the query.
struct ServerFilter {
    std::set<std::wstring> sources = {};  // empty: all
    std::optional<UtcTime> from = {};     // inclusive
    std::optional<UtcTime> until = {};    // exclusive
};

// Minutes east of UTC.
struct ZoneOffsets {
    std::chrono::minutes shown;   // of all times in the list: today's offset
    std::chrono::minutes chosen;  // of a picker's time: the offset at that time
};

// The offsets of this computer's time zone. `around` is near the times that will be chosen.
ZoneOffsets OffsetsOfThisZone(UtcTime around);

// The query that the program passes to the service. "*" if nothing is filtered.
std::wstring ExpectedQuery(const std::wstring& channel, const ServerFilter& filter);

UtcTime TimeOf(const RecordedEvent& event);
SYSTEMTIME FieldsOf(LocalTime time);
LocalTime LocalTimeOf(const SYSTEMTIME& fields);

// Return whether an event matches the query, and whether it matches the text in the filter edit.
bool IsFound(const RecordedEvent& event, const ServerFilter& filter);
bool IsShown(const RecordedEvent& event, const std::wstring& text, std::chrono::minutes offset);

// Returns whether a text contains another. Ignores the case of the letters A to Z only.
bool Holds(const std::wstring& text, const std::wstring& part);

RowCells ExpectedCells(const RecordedEvent& event, std::chrono::minutes offset);

// The node's name followed by its filters, such as "Application (2 sources, time range)".
std::wstring ExpectedSummary(const std::wstring& name, std::size_t sources, bool hasRange);
std::wstring ExpectedSourcesCaption(std::size_t sources);

}  // namespace tavrin::test
