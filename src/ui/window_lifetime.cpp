#include "ui/window_lifetime.h"

#include <string>

#include "diag/debug_trace.h"
#include "eventlog/channels_tree.h"
#include "eventlog/load_protocol.h"
#include "eventlog/workers.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/create_controls.h"

namespace tavrin::ui {
namespace {

void StartTreeBuilding(MainWindow& window) {
    auto context = std::make_shared<eventlog::EventAPIContext>();
    context->wrapper = std::make_unique<eventlog::EventWrapper>();
    context->tree = std::make_shared<eventlog::ChannelsTree>();
    eventlog::g_eventApiContext = std::move(context);
    diag::DebugTrace(std::wstring(L"Initiating BuildChannlesTree of Event Log API Wrapper."));
    window.workers.push_back(eventlog::StartTreeBuilder(window.handle));
}

// Stops every loader before it joins any: a paused one would never end, and the others
// end while the first is waited for.
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

void JoinWorkers(MainWindow& window) {
    for (std::thread& worker : window.workers) {
        worker.join();
    }
    window.workers.clear();
}

}  // namespace

std::unique_ptr<MainWindow> g_mainWindow;

void CreateMainWindowState(HWND window, HINSTANCE instance) {
    g_mainWindow = std::make_unique<MainWindow>(window);
    StartTreeBuilding(*g_mainWindow);
    CreateControls(*g_mainWindow, instance);
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
