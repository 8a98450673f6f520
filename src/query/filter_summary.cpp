#include "query/filter_summary.h"

namespace tavrin::query {

std::wstring FilterSummary(const std::wstring& name, std::size_t selectedCount,
                           const TimeRangeFilter& timeRange) {
    std::wstring summary;
    if (selectedCount > 0) {
        summary = std::to_wstring(selectedCount) + (selectedCount == 1 ? L" source" : L" sources");
    }
    if (timeRange.hasFrom || timeRange.hasTo) {
        summary.append(summary.empty() ? L"" : L", ").append(L"time range");
    }
    return summary.empty() ? name : name + L" (" + summary + L")";
}

}  // namespace tavrin::query
