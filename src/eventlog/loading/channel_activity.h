#pragma once

#include <map>
#include <memory>
#include <thread>

#include <windows.h>

#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {

struct EventNode;

// What goes on behind a channel that has been shown: its loader, and the watch for
// events written after it was read.
struct ChannelActivity {
    std::shared_ptr<EventNode> node;
    std::thread worker;                  // joined before the activity is emptied
    UniqueKernelHandle newEventsSignal;  // manual reset, set by the service
    UniqueEvt subscription;
};

// By the node's address. Entries stay for the whole run. Window thread only.
using ChannelActivityTable = std::map<const EventNode*, ChannelActivity>;

// Subscribes to the channel's future events that its query lets pass, and starts its
// loader. A channel that cannot be watched is loaded all the same. Window thread only;
// waits for an earlier loader of the channel, which must be ending. Throws
// std::system_error when no thread can be started.
void StartChannelActivity(HWND window, const std::shared_ptr<EventNode>& node,
                          ChannelActivityTable& table);

// Stops and joins the loader, then ends the subscription; the entry is left empty.
void EndChannelActivity(ChannelActivity& activity);

// Whether events have arrived that the shown node's last load did not read. Never for
// a folder or after a failed load. Leaves the signal as it is.
bool CheckNewEvents(const ChannelActivityTable& table, const EventNode* shown);

}  // namespace tavrin::eventlog
