#pragma once

#include <optional>
#include <string>

#include <windows.h>

#include "query/filter_state.h"

namespace tavrin::query {

// The two ends of the time range, in the order of their pickers.
enum class TimeBound { From, To };

// The range for the local times that were picked, if any; "to" becomes exclusive, one
// second on. A time that cannot be converted counts as not picked.
TimeRangeFilter MakeTimeRange(const std::optional<SYSTEMTIME>& localFrom,
                              const std::optional<SYSTEMTIME>& localTo);

// False when both bounds are there and nothing lies between them.
bool IsOrdered(const TimeRangeFilter& range);

// Whether two ranges differ in a bound that counts.
bool Differ(const TimeRangeFilter& a, const TimeRangeFilter& b);

// What a bound starts with when it is ticked: the day's first moment for From, the
// present second for To.
SYSTEMTIME FirstTimeOf(TimeBound bound, const SYSTEMTIME& localNow);

// Reads day/month/year hour:minute:second; nothing unless all six are numbers.
std::optional<SYSTEMTIME> ParseTimeText(const std::wstring& text);

}  // namespace tavrin::query
