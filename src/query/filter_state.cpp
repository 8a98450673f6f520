#include "query/filter_state.h"

namespace tavrin::query {

TimeRangeFilter g_timeRangeFilter;
SourceFilterTable g_sourceFilterTable;

}  // namespace tavrin::query
