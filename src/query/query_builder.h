#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "query/filter_state.h"

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::query {

// The query document for a channel and the program's filters; empty if nothing is filtered. Equal
// filters give equal texts, so a changed text means a reload. Leaves an entry for the channel in
// the table of source filters. Window thread.
std::wstring BuildChannelQuery(const eventlog::EventNode& node);

// The same for given filters.
std::wstring BuildQueryText(std::wstring_view channelPath, const TimeRangeFilter& timeRange,
                            const SourceSet& selectedSources);

// A UTC time as "2024-03-01T08:00:00.000Z". All fields are zero if it cannot be converted.
std::wstring FormatQueryTime(std::uint64_t fileTime);

// Appends one Select element. Escapes the clause; the path must be escaped.
void AppendSelect(std::wstring& document, std::wstring_view escapedPath, std::wstring_view clause);

}  // namespace tavrin::query
