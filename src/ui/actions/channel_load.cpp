#include "ui/actions/channel_load.h"

#include <exception>
#include <utility>

#include "base/reserve_more.h"
#include "diag/debug_trace.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"
#include "eventlog/service/failure_code.h"
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

// Runs a step that only informs the user. If memory or threads are short, the load starts without
// it.
template <typename Step>
void Attempt(Step step) {
    try {
        step();
    } catch (const std::exception& error) {
        diag::TraceException(error);
    }
}

void StartCounting(MainWindow& window) {
    eventlog::JoinEndedWorkers(window.workers);
    base::ReserveMore(window.workers, 1);  // a running thread must not be lost
    window.workers.push_back(eventlog::StartRecordCounter(window.handle, window.currentNode));
}

// Shows 0 until a record counter has answered.
void ShowTotal(MainWindow& window, const EventNode& node) {
    const auto known = window.recordCounts.find(&node);
    if (known != window.recordCounts.end()) {
        SetTotalCount(window, known->second);
        return;
    }
    SetTotalCount(window, 0);
    StartCounting(window);
}

// Empties the node and the rows together, so that they never disagree.
void ForgetLoad(MainWindow& window, EventNode& node, std::wstring query) {
    const auto activity = window.activities.find(&node);
    if (activity != window.activities.end()) {
        eventlog::EndChannelActivity(activity->second);
    }
    window.disposer.Dispose(eventlog::ResetForLoad(node, std::move(query)));
    window.disposer.Dispose(window.rows.Clear());
}

// A loader that cannot be started counts as a failed load.
void StartActivity(MainWindow& window, EventNode& node) {
    try {
        eventlog::StartChannelActivity(window.handle, window.currentNode, window.activities);
    } catch (const std::exception& error) {
        diag::TraceException(error);
        eventlog::StoreLoadResult(node, eventlog::FailureCodeOf(error));
        eventlog::EndFailedLoad(node);
    }
}

}  // namespace

void StartLoad(MainWindow& window, FilterText filterText) {
    window.shownNode = window.currentNode;
    EventNode& node = *window.shownNode;
    Attempt([&] { ShowTotal(window, node); });
    Attempt([&] { StartDraining(window, node); });
    window.disposer.Dispose(window.rows.Clear());
    window.shownRowCount.reset();
    if (filterText == FilterText::Clear) {
        ClearFilterText(window);
    }
    eventlog::RewindRecords(node);
    Attempt([&] { SetStatusMessage(window, {}); });
    Attempt([&] { SetDetailsText(window, {}); });
    if (eventlog::HasLeftovers(node)) {
        ForgetLoad(window, node, node.query);
    }
    if (eventlog::BeginLoad(node)) {
        StartActivity(window, node);
    }
    FillSourcesPanel(window);
    SetTotalCaption(window, !node.query.empty());
    ShowNewEventsNotice(window);
}

void StartReload(MainWindow& window, std::wstring query, FilterText filterText) {
    EventNode& node = *window.currentNode;
    ForgetLoad(window, node, std::move(query));
    if (filterText == FilterText::Keep && HasFilterText(window)) {
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
