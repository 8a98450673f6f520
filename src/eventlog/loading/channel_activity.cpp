#include "eventlog/loading/channel_activity.h"

#include <span>
#include <string>

#include "diag/debug_trace.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"

namespace tavrin::eventlog {
namespace {

constexpr DWORD kPendingEvents = 16;

UniqueEvt SubscribeToFutureEvents(const EventNode& node, HANDLE signal) {
    const bool filtered = !node.query.empty();
    return UniqueEvt(EvtSubscribe(nullptr, signal, filtered ? nullptr : node.id.c_str(),
                                  filtered ? node.query.c_str() : L"*", nullptr, nullptr, nullptr,
                                  EvtSubscribeToFutureEvents));
}

// Events that are pending already are not read, but count as new. A failing EvtNext means that
// none are pending.
void SignalPendingEvents(const ChannelActivity& activity) {
    EVT_HANDLE pending[kPendingEvents] = {};
    DWORD count = 0;
    if (!EvtNext(activity.subscription.get(), kPendingEvents, pending, 0, 0, &count)) {
        return;
    }
    for (const EVT_HANDLE event : std::span(pending, count)) {
        const UniqueEvt closed(event);
    }
    if (count > 0) {
        SetEvent(activity.newEventsSignal.get());
    }
}

void Watch(ChannelActivity& activity) {
    activity.subscription.reset();
    activity.newEventsSignal = UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!activity.newEventsSignal) {
        return;
    }
    activity.subscription = SubscribeToFutureEvents(*activity.node, activity.newEventsSignal.get());
    if (activity.subscription) {
        SignalPendingEvents(activity);
        return;
    }
    const DWORD error = GetLastError();
    diag::DebugTrace(std::wstring(L"EvtSubscribe failed for ")
                         .append(activity.node->id)
                         .append(L": ")
                         .append(std::to_wstring(error)));
    activity.newEventsSignal.reset();
}

}  // namespace

void StartChannelActivity(HWND window, const std::shared_ptr<EventNode>& node,
                          ChannelActivityTable& table) {
    ChannelActivity& activity = table[node.get()];
    activity.node = node;
    if (activity.worker.joinable()) {
        activity.worker.join();
    }
    Watch(activity);
    activity.worker = StartChannelLoader(window, node);
}

void EndChannelActivity(ChannelActivity& activity) {
    if (activity.node) {
        StopLoad(*activity.node);
        AwaitReadEnd(*activity.node);
    }
    if (activity.worker.joinable()) {
        activity.worker.join();
    }
    activity.subscription.reset();
    activity.newEventsSignal.reset();
    activity.node.reset();
}

bool CheckNewEvents(const ChannelActivityTable& table, const EventNode* shown) {
    if (shown == nullptr || !shown->IsChannel() ||
        shown->loadResult.load(std::memory_order_acquire) != ERROR_SUCCESS) {
        return false;
    }
    const auto entry = table.find(shown);
    if (entry == table.end() || !entry->second.newEventsSignal) {
        return false;
    }
    return WaitForSingleObject(entry->second.newEventsSignal.get(), 0) == WAIT_OBJECT_0;
}

}  // namespace tavrin::eventlog
