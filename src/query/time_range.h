#pragma once

#include <optional>
#include <string>

#include <windows.h>

#include "query/filter_state.h"

namespace tavrin::query {

// The two ends of the time range, in the order of their pickers.
enum class TimeBound { From, To };

// The range between local times, each of which may be absent. Makes `to` exclusive by adding a
// second. A time that cannot be converted counts as absent.
TimeRangeFilter MakeTimeRange(const std::optional<SYSTEMTIME>& localFrom,
                              const std::optional<SYSTEMTIME>& localTo);

// False if both bounds are set and From is not before To.
bool IsOrdered(const TimeRangeFilter& range);

// Whether two ranges differ in a bound that is set.
bool Differ(const TimeRangeFilter& a, const TimeRangeFilter& b);

// The time that a bound gets when it is ticked: today's midnight for From, the present second for
// To.
SYSTEMTIME FirstTimeOf(TimeBound bound, const SYSTEMTIME& localNow);

// Parses day/month/year hour:minute:second. Returns nothing unless all six are numbers.
std::optional<SYSTEMTIME> ParseTimeText(const std::wstring& text);

}  // namespace tavrin::query
