#pragma once

#include <memory>
#include <thread>

#include <windows.h>

#include "eventlog/channel_enumeration.h"

namespace tavrin::eventlog {

class ChannelsTree;
struct EventNode;

// What the whole program has of the event log.
struct EventAPIContext {
    std::unique_ptr<EventWrapper> wrapper;
    std::shared_ptr<ChannelsTree> tree;
};

// Set by the window thread before it starts the tree builder, which reads it.
extern std::shared_ptr<EventAPIContext> g_eventApiContext;

// Each starts one worker for one request; the caller joins it. The node is held for
// the worker's whole life. A thread that cannot be started throws std::system_error.

// Fills the context's tree, then posts WM_CHANNELS_TREE_BUILT, whatever came of it.
std::thread StartTreeBuilder(HWND window);

// Posts WM_RECORD_COUNT_READY with the node's address, unless the count fails.
std::thread StartRecordCounter(HWND window, std::shared_ptr<EventNode> node);

// Loads the node's channel up to the load limit, waits there, and ends at the end of
// the results, at a failure or when asked to stop.
std::thread StartChannelLoader(HWND window, std::shared_ptr<EventNode> node);

}  // namespace tavrin::eventlog
