#include "query/filter_records.h"

namespace tavrin::query {

TimeRangeFilter g_timeRangeFilter;
SourceFilterTable g_sourceFilterTable;

}  // namespace tavrin::query
