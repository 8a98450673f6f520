#include "eventlog/loading/workers.h"

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/loading/event_loading.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/record_count.h"
#include "eventlog/loading/worker_messages.h"
#include "eventlog/service/failure_code.h"

namespace tavrin::eventlog {
namespace {

// The arguments of a worker. Owned by the worker; released when it ends.
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

void BuildTree(std::unique_ptr<TreeBuilderArguments> arguments) {
    try {
        const EventAPIContext& context = *g_eventApiContext;
        // A tree without channels is shown like any other.
        static_cast<void>(context.wrapper->BuildChannlesTree(*context.tree));
    } catch (const std::exception& error) {
        diag::TraceException(error);
    }
    PostMessageW(arguments->window, WM_CHANNELS_TREE_BUILT, 0, 0);
}

void CountRecords(std::unique_ptr<RecordCounterArguments> arguments) {
    const EventNode& node = *arguments->node;
    CountChannelRecords({node.id, arguments->window, reinterpret_cast<LPARAM>(&node)});
}

// An exception is a failure like any other.
std::int16_t LoadStep(EventNode& node, UniqueEvt& query) {
    try {
        return static_cast<std::int16_t>(LoadChannelEvents(node, query));
    } catch (const std::exception& error) {
        diag::TraceException(error);
        StoreLoadResult(node, FailureCodeOf(error));
        return -1;
    }
}

void TraceStep(std::int32_t round, std::int16_t result, std::uint64_t loaded) {
    diag::DebugTrace(std::wstring(L"\n\nInside thread Loop - i: ")
                         .append(std::to_wstring(round))
                         .append(L" - ret: ")
                         .append(std::to_wstring(result))
                         .append(L" - loaded: ")
                         .append(std::to_wstring(loaded)));
}

// Loads until the end, a failure or a stop. Returns false after a failure.
bool LoadUntilEnd(EventNode& node) {
    UniqueEvt query;
    for (std::int32_t round = 0; AwaitRoom(node); ++round) {
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

void LoadChannel(std::unique_ptr<ChannelLoaderArguments> arguments) {
    EventNode& node = *arguments->node;
    bool succeeded = false;
    try {
        succeeded = LoadUntilEnd(node);
    } catch (const std::exception& error) {
        diag::TraceException(error);
        StoreLoadResult(node, FailureCodeOf(error));
    }
    if (!succeeded) {
        EndFailedLoad(node);
    }
}

template <typename Arguments>
Worker StartWorker(void (*run)(std::unique_ptr<Arguments>), Arguments arguments) {
    auto hasEnded = std::make_shared<std::atomic<bool>>(false);
    auto work = [run, hasEnded](std::unique_ptr<Arguments> owned) {
        run(std::move(owned));
        hasEnded->store(true);
    };
    return {std::thread(std::move(work), std::make_unique<Arguments>(std::move(arguments))),
            std::move(hasEnded)};
}

}  // namespace

std::shared_ptr<EventAPIContext> g_eventApiContext;

void JoinEndedWorkers(std::vector<Worker>& workers) {
    for (Worker& worker : workers) {
        if (worker.hasEnded->load()) {
            worker.thread.join();
        }
    }
    std::erase_if(workers, [](const Worker& worker) { return !worker.thread.joinable(); });
}

Worker StartTreeBuilder(HWND window) {
    return StartWorker(BuildTree, TreeBuilderArguments{window});
}

Worker StartRecordCounter(HWND window, std::shared_ptr<EventNode> node) {
    return StartWorker(CountRecords, RecordCounterArguments{window, std::move(node)});
}

std::thread StartChannelLoader(HWND window, std::shared_ptr<EventNode> node) {
    return std::thread(LoadChannel, std::make_unique<ChannelLoaderArguments>(
                                        ChannelLoaderArguments{window, std::move(node)}));
}

}  // namespace tavrin::eventlog
