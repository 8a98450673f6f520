#pragma once

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <windows.h>

#include "eventlog/channels/channel_enumeration.h"

namespace tavrin::eventlog {

class ChannelsTree;
struct EventNode;

// Program-wide event-log state.
struct EventAPIContext {
    std::unique_ptr<EventWrapper> wrapper;
    std::shared_ptr<ChannelsTree> tree;
};

// Set by the window thread before it starts the tree builder, which reads it.
extern std::shared_ptr<EventAPIContext> g_eventApiContext;

// A worker that ends by itself. Its starter joins it.
struct Worker {
    std::thread thread;
    std::shared_ptr<const std::atomic<bool>> hasEnded;
};

// Joins the workers that have ended and removes them from the list. A thread keeps its kernel
// handle until it is joined.
void JoinEndedWorkers(std::vector<Worker>& workers);

// Each starts one worker for one request. The worker holds its node for its whole life. Throws
// std::system_error if the thread cannot be started; std::bad_alloc.

// Fills the context's tree, then posts WM_CHANNELS_TREE_BUILT, also after a failure.
Worker StartTreeBuilder(HWND window);

// Posts WM_RECORD_COUNT_READY with the node's address, unless the count fails.
Worker StartRecordCounter(HWND window, std::shared_ptr<EventNode> node);

// Loads the node's channel up to the load limit, waits there, and ends at the end of the
// results, at a failure or when asked to stop.
std::thread StartChannelLoader(HWND window, std::shared_ptr<EventNode> node);

}  // namespace tavrin::eventlog
