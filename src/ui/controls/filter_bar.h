#pragma once

#include <optional>
#include <string>

#include <windows.h>
#include <commctrl.h>

#include "query/time_range.h"

namespace tavrin::ui {

struct MainWindow;

// Set up the toolbar and its controls. Once each.
void SetUpToolbar(MainWindow& window, HWND toolbar);
void SetUpFilterEdit(MainWindow& window, HWND edit);
void SetUpPicker(MainWindow& window, HWND picker);

// The filter edit's text, at most 255 characters.
std::wstring ReadFilterText(const MainWindow& window);
bool HasFilterText(const MainWindow& window);
void ClearFilterText(const MainWindow& window);

// The local time that a picker shows; nothing while it is unticked.
std::optional<SYSTEMTIME> ReadPicker(const MainWindow& window, query::TimeBound bound);

// Ticks a picker and shows a local time. The picker sends no notification for it.
void WritePicker(MainWindow& window, query::TimeBound bound, const SYSTEMTIME& time);

// The filter edit's text changed: restarts the timer that applies it.
void OnFilterTextChanged(MainWindow& window);

// A picker was ticked, unticked or changed: restarts the timer that applies the range.
void OnPickerChanged(MainWindow& window, query::TimeBound bound, const NMDATETIMECHANGE& change);

}  // namespace tavrin::ui
