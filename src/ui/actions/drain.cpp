#include "ui/actions/drain.h"

#include <exception>
#include <string>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/loading/load_protocol.h"
#include "ui/controls/details_pane.h"
#include "ui/controls/event_list.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/rules/load_error_text.h"

namespace tavrin::ui {
namespace {

using diag::DebugTrace;
using eventlog::EventNode;

constexpr std::uint64_t kCountPeriodMs = 200;

void RunDrainTimer(MainWindow& window, const EventNode& node) {
    if (!window.draining) {
        StartTimer(window, Timer::Drain);
        window.draining = true;
    }
    window.drainNode = &node;
}

void StopDraining(MainWindow& window) {
    StopTimer(window, Timer::Drain);
    window.draining = false;
    window.drainNode = nullptr;
}

// While a load runs the list grows in visible steps, not at every tick. Repeating a count would
// repaint the list for nothing.
void UpdateCount(MainWindow& window, bool more, std::uint64_t now) {
    if (more && now - window.lastCountUpdate <= kCountPeriodMs) {
        return;
    }
    if (window.shownRowCount != window.rows.RowCount()) {
        UpdateRowCount(window);
    }
    window.lastCountUpdate = now;
}

void ShowLoadResult(const MainWindow& window, EventNode& node) {
    const std::uint32_t code = node.loadResult.load(std::memory_order_acquire);
    if (code == ERROR_SUCCESS) {
        return;
    }
    eventlog::AcknowledgeFailure(node);
    const std::wstring message = LoadFailureMessage(node.id, code, window.rows.LoadedCount());
    SetStatusMessage(window, message);
    SetDetailsText(window, LoadFailureDetails(message, node.id, code));
}

void FinishDraining(MainWindow& window, EventNode& node) {
    StopDraining(window);
    try {
        DebugTrace(std::wstring(L"Finished draining. Killing timer."));
        ShowLoadResult(window, node);
    } catch (const std::exception&) {
        RunDrainTimer(window, node);  // the next tick tries again
        throw;
    }
}

}  // namespace

void StartDraining(MainWindow& window, const EventNode& node) {
    const bool wasDraining = window.draining;
    RunDrainTimer(window, node);
    DebugTrace(std::wstring(wasDraining ? L"Drain Timer was running. Updating drain node."
                                        : L"Drain Timer was not running.Setting drain node."));
}

void DrainRecords(MainWindow& window) {
    if (!window.draining) {
        return;  // the tick was posted before the timer was killed
    }
    if (window.drainNode != window.currentNode.get()) {
        DebugTrace(std::wstring(L"User switched channels. Killing timer."));
        StopDraining(window);
        return;
    }
    EventNode& node = *window.currentNode;
    const std::uint64_t now = GetTickCount64();
    query::Batch batch = window.rows.TakeBatch(node);
    OfferSources(window, std::move(batch.providers));
    window.rows.AppendMatching(ReadFilterText(window));
    UpdateCount(window, batch.more, now);
    if (!batch.more) {
        FinishDraining(window, node);
    }
}

}  // namespace tavrin::ui
