#pragma once

#include <map>
#include <memory>
#include <thread>

#include <windows.h>

#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {

struct EventNode;

// The loader of a channel that has been shown, and the watch for events written after it was read.
struct ChannelActivity {
    std::shared_ptr<EventNode> node;
    std::thread worker;                  // joined before the activity is emptied
    UniqueKernelHandle newEventsSignal;  // manual reset, set by the service
    UniqueEvt subscription;
};

// By the node's address. Entries stay for the whole run. Window thread only.
using ChannelActivityTable = std::map<const EventNode*, ChannelActivity>;

// Subscribes to the channel's future events that pass its query, and starts its loader. A channel
// that cannot be watched is loaded all the same. Window thread only. Waits for an earlier loader of
// the channel, which must be ending. Throws std::system_error if the loader cannot be started;
// std::bad_alloc.
void StartChannelActivity(HWND window, const std::shared_ptr<EventNode>& node,
                          ChannelActivityTable& table);

// Cancels, stops and joins the loader, then ends the subscription. Leaves the entry empty.
void EndChannelActivity(ChannelActivity& activity);

// Whether events have arrived that the shown node's last load did not read. False for a folder and
// after a failed load. Leaves the signal set.
bool CheckNewEvents(const ChannelActivityTable& table, const EventNode* shown);

}  // namespace tavrin::eventlog
