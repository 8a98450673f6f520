#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include "eventlog/channel_activity.h"
#include "eventlog/event_node.h"
#include "eventlog/record_disposer.h"
#include "query/event_rows.h"
#include "ui/controls.h"
#include "ui/fonts.h"
#include "ui/pane_layout.h"
#include "ui/splitters.h"

namespace tavrin::ui {

// What the main window knows. Made on WM_CREATE, gone with WM_DESTROY; touched on the
// window thread only.
struct MainWindow {
    explicit MainWindow(HWND window) : handle(window) {}

    HWND handle;
    Controls controls;
    PaneSizes panes;
    Splitter dragging = Splitter::None;
    std::array<bool, 2> pickerOn{};  // by query::TimeBound: ticked at its last change
    Fonts fonts;

    std::vector<std::wstring> shownSources;  // a name for each row of the sources list
    bool suppressSourceNotifications = false;

    std::shared_ptr<eventlog::EventNode> currentNode;  // selected in the tree

    // The node whose records timer 1 moves into the rows; none while it does not run.
    const eventlog::EventNode* drainNode = nullptr;
    bool draining = false;
    query::EventRows rows;
    std::uint64_t lastCountUpdate = 0;  // GetTickCount64
    eventlog::RecordDisposer disposer;

    std::map<const eventlog::EventNode*, std::uint64_t> recordCounts;
    std::vector<std::thread> workers;  // the tree builder and the record counters
    eventlog::ChannelActivityTable activities;

    bool ShowsChannel() const { return currentNode && currentNode->IsChannel(); }
};

// Only decodes messages; nothing leaves it as an exception.
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tavrin::ui
