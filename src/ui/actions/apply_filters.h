#pragma once

#include "query/time_range.h"

namespace tavrin::ui {

struct MainWindow;

// Reads the pickers and reloads the current channel if its query changed.
void ApplyFilters(MainWindow& window);

// Applies at once a change that waits for its timer. Does nothing if none does.
void ApplyPendingFilters(MainWindow& window);

// Stops the timer and applies the filters as they are.
void ApplyFiltersNow(MainWindow& window);

// Shows the loaded records that match the filter text. A text lifts the load limit, because the
// filter has to see every record.
void ApplyTextFilter(MainWindow& window);

// "Set as From" and "Set as To": takes the selected row's time. Does nothing without one.
void SetPickerFromEvent(MainWindow& window, query::TimeBound bound);

// "Show all sources": unticks every source. Does nothing for a folder.
void ShowAllSources(MainWindow& window);

}  // namespace tavrin::ui
