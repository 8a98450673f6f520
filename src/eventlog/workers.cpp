#include "eventlog/workers.h"

#include <cstdint>
#include <exception>
#include <mutex>
#include <string>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/channels_tree.h"
#include "eventlog/event_loading.h"
#include "eventlog/event_node.h"
#include "eventlog/record_count.h"
#include "eventlog/worker_messages.h"

namespace tavrin::eventlog {
namespace {

using diag::DebugTrace;

// What a worker was started with; it frees the record, and the node with it, as its
// last act.
struct TreeBuilderArguments {
    HWND window;
};

struct RecordCounterArguments {
    HWND window;
    std::shared_ptr<EventNode> node;
};

struct ChannelLoaderArguments {
    HWND window;
    std::shared_ptr<EventNode> node;
};

// Runs one piece of a worker's work; an exception ends that piece, not the process.
template <typename Work>
bool RunGuarded(Work work) {
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        DebugTrace(std::string(error.what()));
        return false;
    }
}

void BuildTree(std::unique_ptr<TreeBuilderArguments> arguments) {
    RunGuarded([] {
        const EventAPIContext& context = *g_eventApiContext;
        context.wrapper->BuildChannlesTree(*context.tree);
    });
    PostMessageW(arguments->window, WM_CHANNELS_TREE_BUILT, 0, 0);
}

void CountRecords(std::unique_ptr<RecordCounterArguments> arguments) {
    RunGuarded([&arguments] {
        const EventNode& node = *arguments->node;
        CountChannelRecords({node.id, arguments->window, reinterpret_cast<LPARAM>(&node)});
    });
}

// Waits while the load is at its limit. False when it was asked to stop.
bool WaitForRoom(EventNode& node) {
    std::unique_lock lock(node.loadMutex);
    node.loadCondition.wait(lock, [&node] {
        return node.stopRequested.load() != 0 || node.loadedCount.load() < node.loadLimit;
    });
    return node.stopRequested.load() == 0;
}

// An exception counts as a failure without a code.
std::int16_t LoadStep(EventNode& node, UniqueEvt& query) {
    std::int16_t result = -1;
    RunGuarded([&] { result = static_cast<std::int16_t>(LoadChannelEvents(node, query)); });
    return result;
}

void TraceStep(std::int32_t round, std::int16_t result, std::uint64_t loaded) {
    DebugTrace(std::wstring(L"\n\nInside thread Loop - i: ")
                   .append(std::to_wstring(round))
                   .append(L" - ret: ")
                   .append(std::to_wstring(result))
                   .append(L" - loaded: ")
                   .append(std::to_wstring(loaded)));
}

// Loads until the end, a failure or a stop. False after a failure.
bool LoadUntilEnd(EventNode& node) {
    UniqueEvt query;
    for (std::int32_t round = 0; WaitForRoom(node); ++round) {
        const std::int16_t result = LoadStep(node, query);
        TraceStep(round, result, node.loadedCount.load());
        if (result < 0) {
            return false;
        }
        if (node.done.load() != 0 || node.stopRequested.load() != 0) {
            break;
        }
    }
    return true;
}

// A failed load always reports some code. Where records were handed over, the window
// clears the loading flag once it has taken them.
void RecordFailure(EventNode& node) {
    std::uint32_t none = 0;
    node.loadResult.compare_exchange_strong(none, ERROR_INTERNAL_ERROR);
    if (node.loadedCount.load() == 0) {
        node.loading.store(0);
    }
}

void LoadChannel(std::unique_ptr<ChannelLoaderArguments> arguments) {
    EventNode& node = *arguments->node;
    bool loaded = false;
    RunGuarded([&] { loaded = LoadUntilEnd(node); });
    if (!loaded) {
        RecordFailure(node);
    }
}

}  // namespace

std::shared_ptr<EventAPIContext> g_eventApiContext;

std::thread StartTreeBuilder(HWND window) {
    return std::thread(BuildTree,
                       std::make_unique<TreeBuilderArguments>(TreeBuilderArguments{window}));
}

std::thread StartRecordCounter(HWND window, std::shared_ptr<EventNode> node) {
    return std::thread(CountRecords, std::make_unique<RecordCounterArguments>(
                                         RecordCounterArguments{window, std::move(node)}));
}

std::thread StartChannelLoader(HWND window, std::shared_ptr<EventNode> node) {
    return std::thread(LoadChannel, std::make_unique<ChannelLoaderArguments>(
                                        ChannelLoaderArguments{window, std::move(node)}));
}

}  // namespace tavrin::eventlog
