#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "query/filter_state.h"

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::query {

// The query document of a channel under the program's filters; empty when nothing is
// filtered. Equal filters give equal texts: a changed text means a reload. Leaves an
// entry for the channel in the table of source filters. Window thread.
std::wstring BuildChannelQuery(const eventlog::EventNode& node);

// The same for given filters.
std::wstring BuildQueryText(std::wstring_view channelPath, const TimeRangeFilter& timeRange,
                            const SourceSet& selectedSources);

// A bound of the time range, UTC, as "2024-03-01T08:00:00.000Z". All fields are zero
// for a time beyond the calendar.
std::wstring FormatQueryTime(std::uint64_t fileTime);

// Appends one Select element with a clause that is not escaped yet.
void AppendSelect(std::wstring& document, std::wstring_view escapedPath, std::wstring_view clause);

}  // namespace tavrin::query
