#include "ui/window_lifetime.h"

#include <cstdint>
#include <exception>
#include <string>

#include "diag/debug_trace.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"
#include "eventlog/service/failure_code.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/create_controls.h"
#include "ui/rules/load_error_text.h"

namespace tavrin::ui {
namespace {

void StartTreeBuilding(MainWindow& window) {
    auto context = std::make_shared<eventlog::EventAPIContext>();
    context->wrapper = std::make_unique<eventlog::EventWrapper>();
    context->tree = std::make_shared<eventlog::ChannelsTree>();
    eventlog::g_eventApiContext = std::move(context);
    diag::DebugTrace(std::wstring(L"Initiating BuildChannlesTree of Event Log API Wrapper."));
    window.workers.reserve(1);
    window.workers.push_back(eventlog::StartTreeBuilder(window.handle));
}

// Returns 0, or the code that the user is shown instead of a tree.
std::uint32_t TryStartTreeBuilding(MainWindow& window) {
    try {
        StartTreeBuilding(window);
        return ERROR_SUCCESS;
    } catch (const std::exception& error) {
        diag::TraceException(error);
        return eventlog::FailureCodeOf(error);
    }
}

// Stops every loader before joining any: a paused one would never end, and the others end
// meanwhile.
void EndActivities(MainWindow& window) {
    for (const auto& [address, activity] : window.activities) {
        if (activity.node) {
            eventlog::StopLoad(*activity.node);
        }
    }
    for (auto& [address, activity] : window.activities) {
        eventlog::EndChannelActivity(activity);
    }
    window.activities.clear();
}

// Ends the tree walk first: a service that never ends its list would keep the process alive.
void JoinWorkers(MainWindow& window) {
    if (eventlog::g_eventApiContext) {
        eventlog::g_eventApiContext->wrapper->StopBuilding();
    }
    for (eventlog::Worker& worker : window.workers) {
        worker.thread.join();
    }
    window.workers.clear();
}

}  // namespace

std::unique_ptr<MainWindow> g_mainWindow;

void CreateMainWindowState(HWND window, HINSTANCE instance) {
    g_mainWindow = std::make_unique<MainWindow>(window);
    const std::uint32_t failure = TryStartTreeBuilding(*g_mainWindow);
    CreateControls(*g_mainWindow, instance);
    if (failure != ERROR_SUCCESS) {
        SetStatusMessage(*g_mainWindow, LoadErrorText(failure));
    }
    StartTimer(*g_mainWindow, Timer::LiveCheck);
}

void DestroyMainWindowState() {
    MainWindow& window = *g_mainWindow;
    StopAllTimers(window);
    EndActivities(window);
    JoinWorkers(window);
    window.currentNode.reset();
    g_mainWindow.reset();
}

}  // namespace tavrin::ui
