#include "ui/actions/channel_load.h"

#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/load_protocol.h"
#include "eventlog/workers.h"
#include "ui/actions/drain.h"
#include "ui/actions/new_events.h"
#include "ui/controls/details_pane.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using eventlog::EventNode;

// From the map, or 0 until a counter thread has answered.
void ShowTotal(MainWindow& window, const EventNode& node) {
    const auto known = window.recordCounts.find(&node);
    if (known != window.recordCounts.end()) {
        SetTotalCount(window, known->second);
        return;
    }
    SetTotalCount(window, 0);
    window.workers.push_back(eventlog::StartRecordCounter(window.handle, window.currentNode));
}

void EndActivity(MainWindow& window, const EventNode& node) {
    const auto activity = window.activities.find(&node);
    if (activity != window.activities.end()) {
        eventlog::EndChannelActivity(activity->second);
    }
}

// Starts the channel's activity unless its loader runs or has read the log to the end.
void StartActivityOnce(MainWindow& window, EventNode& node) {
    if (eventlog::HasLeftovers(node)) {
        EndActivity(window, node);
        window.disposer.Dispose(eventlog::ResetForLoad(node, node.query));
    }
    if (eventlog::BeginLoad(node)) {
        eventlog::StartChannelActivity(window.handle, window.currentNode, window.activities);
    }
}

}  // namespace

void StartLoad(MainWindow& window, FilterText filterText) {
    EventNode& node = *window.currentNode;
    ShowTotal(window, node);
    StartDraining(window, node);
    window.disposer.Dispose(window.rows.Clear());
    if (filterText == FilterText::Clear) {
        ClearFilterText(window);
    }
    eventlog::RewindRecords(node);
    SetStatusMessage(window, {});
    SetDetailsText(window, {});
    StartActivityOnce(window, node);
    FillSourcesPanel(window);
    SetTotalCaption(window, !node.query.empty());
    ShowNewEventsNotice(window);
}

void StartReload(MainWindow& window, std::wstring query, FilterText filterText) {
    EventNode& node = *window.currentNode;
    EndActivity(window, node);
    window.disposer.Dispose(eventlog::ResetForLoad(node, std::move(query)));
    if (filterText == FilterText::Keep && !ReadFilterText(window).empty()) {
        eventlog::UnlimitLoad(node);
    }
    StartLoad(window, filterText);
}

void Refresh(MainWindow& window) {
    if (!window.ShowsChannel()) {
        return;
    }
    const EventNode& node = *window.currentNode;
    window.recordCounts.erase(&node);
    diag::DebugTrace(L"Refreshing " + node.id);
    StartReload(window, node.query, FilterText::Keep);
}

}  // namespace tavrin::ui
