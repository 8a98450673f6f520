#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "eventlog/channels/event_node.h"
#include "eventlog/loading/channel_activity.h"
#include "eventlog/loading/workers.h"
#include "eventlog/records/record_disposer.h"
#include "query/event_rows.h"
#include "ui/controls/control_handles.h"
#include "ui/controls/fonts.h"
#include "ui/rules/pane_layout.h"
#include "ui/rules/splitter_geometry.h"

namespace tavrin::ui {

// The state of the main window. Created on WM_CREATE, destroyed on WM_DESTROY. Window thread
// only.
struct MainWindow {
    explicit MainWindow(HWND window) : handle(window) {}

    HWND handle;
    Controls controls;
    PaneSizes panes;
    Splitter dragging = Splitter::None;
    std::array<bool, 2> pickerOn{};  // by query::TimeBound: ticked at its last change
    Fonts fonts;
    std::vector<std::wstring> shownSources;  // by row of the sources list
    bool suppressSourceNotifications = false;

    std::shared_ptr<eventlog::EventNode> currentNode;  // selected in the tree
    std::shared_ptr<eventlog::EventNode> shownNode;    // the channel whose records the rows are

    // The node whose records the drain timer moves into the rows; null while the timer is
    // stopped.
    const eventlog::EventNode* drainNode = nullptr;
    bool draining = false;

    query::EventRows rows;
    std::optional<std::size_t> shownRowCount;  // the list's; none before a load's first update
    std::uint64_t lastCountUpdate = 0;         // GetTickCount64
    eventlog::RecordDisposer disposer;
    std::map<const eventlog::EventNode*, std::uint64_t> recordCounts;
    std::vector<eventlog::Worker> workers;  // the tree builder and the record counters
    eventlog::ChannelActivityTable activities;

    bool ShowsChannel() const { return currentNode && currentNode->IsChannel(); }
};

}  // namespace tavrin::ui
