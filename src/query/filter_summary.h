#pragma once

#include <cstddef>
#include <string>

#include "query/filter_state.h"

namespace tavrin::query {

// A channel's display name with what narrows its events behind it, for example
// "Application (3 sources, time range)".
std::wstring FilterSummary(const std::wstring& name, std::size_t selectedCount,
                           const TimeRangeFilter& timeRange);

}  // namespace tavrin::query
