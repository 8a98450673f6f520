#include "ui/actions/apply_filters.h"

#include <string>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/records/event_record.h"
#include "query/filter_state.h"
#include "query/query_builder.h"
#include "ui/actions/channel_load.h"
#include "ui/controls/event_list.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using query::TimeBound;
using query::TimeRangeFilter;

// Stores the range of the pickers. Returns false, and shows a message, if From is not before To.
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
    ShowFilterSummary(window);
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

void ApplyTextFilter(MainWindow& window) {
    StopTimer(window, Timer::FilterText);
    const std::wstring text = ReadFilterText(window);
    if (window.ShowsChannel() && !text.empty()) {
        eventlog::UnlimitLoad(*window.currentNode);
    }
    window.rows.Rebuild(text);
    UpdateRowCount(window);
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

void ShowAllSources(MainWindow& window) {
    if (window.ShowsChannel()) {
        UntickAllSources(window);
        ApplyFiltersNow(window);
    }
}

}  // namespace tavrin::ui
