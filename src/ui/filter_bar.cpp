#include "ui/filter_bar.h"

#include <optional>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/event_record.h"
#include "eventlog/load_protocol.h"
#include "query/filter_records.h"
#include "query/filter_summary.h"
#include "query/query_builder.h"
#include "resource.h"
#include "ui/event_list.h"
#include "ui/header_pane.h"
#include "ui/load_start.h"
#include "ui/main_window.h"
#include "ui/status_bar.h"
#include "ui/timers.h"
#include "ui/window_text.h"

namespace tavrin::ui {
namespace {

using query::TimeBound;
using query::TimeRangeFilter;

constexpr UINT_PTR kForwardSubclass = 1;

bool IsPicker(UINT_PTR id) {
    return id == IDC_FROM_PICKER || id == IDC_TO_PICKER;
}

// A toolbar keeps its children's notifications; the pickers' are for the main window.
LRESULT CALLBACK ForwardPickerNotify(HWND toolbar, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR subclass, DWORD_PTR) {
    if (message == WM_NOTIFY && IsPicker(reinterpret_cast<const NMHDR*>(lParam)->idFrom)) {
        return SendMessageW(GetParent(toolbar), message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(toolbar, ForwardPickerNotify, subclass);
    }
    return DefSubclassProc(toolbar, message, wParam, lParam);
}

HWND Picker(const MainWindow& window, TimeBound bound) {
    return bound == TimeBound::From ? window.controls.fromPicker : window.controls.toPicker;
}

bool& PickerOn(MainWindow& window, TimeBound bound) {
    return window.pickerOn[static_cast<std::size_t>(bound)];
}

// Ticks the picker. It raises no notification for a time that the program sets.
void WritePicker(MainWindow& window, TimeBound bound, const SYSTEMTIME& time) {
    PickerOn(window, bound) = true;
    DateTime_SetSystemtime(Picker(window, bound), GDT_VALID, &time);
}

std::optional<SYSTEMTIME> ReadPicker(const MainWindow& window, TimeBound bound) {
    SYSTEMTIME time{};
    if (DateTime_GetSystemtime(Picker(window, bound), &time) != GDT_VALID) {
        return std::nullopt;
    }
    return time;
}

// Takes the pickers' range over; false, with a message, when it is out of order.
bool StoreTimeRange(const MainWindow& window) {
    const TimeRangeFilter range = query::MakeTimeRange(ReadPicker(window, TimeBound::From),
                                                       ReadPicker(window, TimeBound::To));
    if (!query::IsOrdered(range)) {
        SetStatusMessage(window, L"Time range: From is after To");
        return false;
    }
    if (query::Differ(range, query::g_timeRangeFilter)) {
        SetStatusMessage(window, {});
    }
    query::g_timeRangeFilter = range;
    return true;
}

void ReloadIfQueryChanged(MainWindow& window) {
    UpdateFilterSummary(window);
    const eventlog::EventNode& node = *window.currentNode;
    std::wstring query = query::BuildChannelQuery(node);
    if (query == node.query) {
        return;
    }
    diag::DebugTrace(std::wstring(L"Applying filters to ")
                         .append(node.id)
                         .append(L": ")
                         .append(query.empty() ? L"*" : query));
    StartReload(window, std::move(query), FilterText::Keep);
}

}  // namespace

void SetUpToolbar(MainWindow&, HWND toolbar) {
    SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    TBADDBITMAP bitmap{HINST_COMMCTRL, IDB_STD_SMALL_COLOR};
    SendMessageW(toolbar, TB_ADDBITMAP, 0, reinterpret_cast<LPARAM>(&bitmap));
    SetWindowSubclass(toolbar, ForwardPickerNotify, kForwardSubclass, 0);
}

void SetUpFilterEdit(MainWindow&, HWND edit) {
    Edit_SetCueBannerText(edit, L"Filter...");
}

void SetUpPicker(MainWindow&, HWND picker) {
    DateTime_SetFormat(picker, L"dd/MM/yyyy HH:mm:ss");
    // A time goes along unused: some systems refuse to untick a picker without one.
    SYSTEMTIME now{};
    GetLocalTime(&now);
    DateTime_SetSystemtime(picker, GDT_NONE, &now);
}

std::wstring ReadFilterText(const MainWindow& window) {
    return ReadEditText(window.controls.filterEdit);
}

void OnFilterTextChanged(MainWindow& window) {
    StopTimer(window, Timer::FilterText);
    StartTimer(window, Timer::FilterText);
}

void OnFilterTextTimer(MainWindow& window) {
    StopTimer(window, Timer::FilterText);
    const std::wstring text = ReadFilterText(window);
    if (window.ShowsChannel() && !text.empty()) {
        eventlog::UnlimitLoad(*window.currentNode);
    }
    window.rows.Rebuild(text);
    SetLoadedCount(window);
}

void OnPickerChanged(MainWindow& window, TimeBound bound, const NMDATETIMECHANGE& change) {
    const bool on = change.dwFlags == GDT_VALID;
    if (on && !PickerOn(window, bound)) {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        WritePicker(window, bound, query::FirstTimeOf(bound, now));
    } else {
        PickerOn(window, bound) = on;
    }
    StartTimer(window, Timer::FilterApply);
}

void OnFilterApplyTimer(MainWindow& window) {
    ApplyFiltersNow(window);
}

void ApplyFilters(MainWindow& window) {
    if (StoreTimeRange(window) && window.ShowsChannel()) {
        ReloadIfQueryChanged(window);
    }
}

void ApplyPendingFilters(MainWindow& window) {
    if (StopTimer(window, Timer::FilterApply)) {
        ApplyFilters(window);
    }
}

void ApplyFiltersNow(MainWindow& window) {
    StopTimer(window, Timer::FilterApply);
    ApplyFilters(window);
}

void UpdateFilterSummary(const MainWindow& window) {
    const eventlog::EventNode& node = *window.currentNode;
    const auto filter = query::g_sourceFilterTable.find(&node);
    const std::size_t selected =
        filter == query::g_sourceFilterTable.end() ? 0 : filter->second.selectedSources.size();
    SetNodeName(window, query::FilterSummary(node.name, selected, query::g_timeRangeFilter));
}

void SetPickerFromEvent(MainWindow& window, TimeBound bound) {
    const eventlog::EventRecord* const record = window.rows.Row(SelectedRow(window.controls.list));
    if (record == nullptr) {
        return;
    }
    if (const auto time = query::ParseTimeText(record->timeText)) {
        WritePicker(window, bound, *time);
        ApplyFiltersNow(window);
    }
}

}  // namespace tavrin::ui
