#pragma once

#include <string>

#include <windows.h>
#include <commctrl.h>

#include "query/time_range.h"

namespace tavrin::ui {

struct MainWindow;

// Give the toolbar and its controls what they need at the start. Once each.
void SetUpToolbar(MainWindow& window, HWND toolbar);
void SetUpFilterEdit(MainWindow& window, HWND edit);
void SetUpPicker(MainWindow& window, HWND picker);

// The filter edit's text, at most 255 characters.
std::wstring ReadFilterText(const MainWindow& window);

// The filter edit's text changed: it is applied when the typing settles.
void OnFilterTextChanged(MainWindow& window);

// Timer 2: shows the loaded records that match the text. A text needs all records.
void OnFilterTextTimer(MainWindow& window);

// A picker was ticked, unticked or changed: the range is applied when it settles.
void OnPickerChanged(MainWindow& window, query::TimeBound bound, const NMDATETIMECHANGE& change);

// Timer 4: applies the time range and the chosen sources.
void OnFilterApplyTimer(MainWindow& window);

// Reads the pickers, and reloads the current channel if its query changed.
void ApplyFilters(MainWindow& window);

// Applies at once a change that was about to be applied.
void ApplyPendingFilters(MainWindow& window);

// Drops a pending change and applies the filters as they are now.
void ApplyFiltersNow(MainWindow& window);

// Names the current channel and what narrows it.
void UpdateFilterSummary(const MainWindow& window);

// "Set as From" and "Set as To": takes the selected row's time. Nothing without one.
void SetPickerFromEvent(MainWindow& window, query::TimeBound bound);

}  // namespace tavrin::ui
