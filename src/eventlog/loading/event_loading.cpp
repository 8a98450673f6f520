#include "eventlog/loading/event_loading.h"

#include <array>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>

#include "base/utf8.h"
#include "diag/debug_trace.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/records/event_rendering.h"

namespace tavrin::eventlog {
namespace {

using diag::DebugTrace;

constexpr std::size_t kPageSize = 128;
constexpr std::int32_t kFailed = -1;
constexpr DWORD kNewestFirst = EvtQueryChannelPath | EvtQueryReverseDirection;

// Makes a call that reads the log and that the window can cancel. Returns the code of a failed
// call, which can be 0; 1223 without a call if the load must stop.
template <typename Call>
std::optional<DWORD> Read(EventNode& node, EVT_HANDLE query, Call call) {
    const PendingRead pending(node, query);
    if (!pending.MayRead()) {
        return ERROR_CANCELLED;
    }
    if (call()) {
        return std::nullopt;
    }
    return GetLastError();
}

bool WasCancelled(const EventNode& node, DWORD error) {
    return error == ERROR_CANCELLED && node.stopRequested.load() != 0;
}

// A read that the window cancelled is no failure.
std::int32_t EndStep(EventNode& node, DWORD error) {
    if (WasCancelled(node, error)) {
        return 0;
    }
    StoreLoadResult(node, error);
    return kFailed;
}

// Opens the node's query, with its cursor before the newest event. If that fails or the load must
// stop, leaves no query and returns the step's result.
std::int32_t OpenQuery(EventNode& node, UniqueEvt& query) {
    query = UniqueEvt(node.query.empty()
                          ? EvtQuery(nullptr, node.id.c_str(), L"*", kNewestFirst)
                          : EvtQuery(nullptr, nullptr, node.query.c_str(), kNewestFirst));
    if (!query) {
        return EndStep(node, GetLastError());
    }
    // The first match of a rare filter can be far away.
    const auto failure = Read(node, query.get(), [&query] {
        return EvtSeek(query.get(), 0, nullptr, 0, EvtSeekRelativeToFirst) != FALSE;
    });
    if (failure) {
        query.reset();
        return EndStep(node, *failure);
    }
    return 0;
}

// The events of one page, owned before anything else can fail.
class EventPage {
public:
    // Returns the code of a failed call, which can be 0.
    std::optional<DWORD> ReadFrom(EventNode& node, EVT_HANDLE query) {
        std::array<EVT_HANDLE, kPageSize> handles{};
        DWORD count = 0;
        const auto failure = Read(node, query, [&] {
            return EvtNext(query, static_cast<DWORD>(handles.size()), handles.data(), INFINITE, 0,
                           &count) != FALSE;
        });
        for (; !failure && count_ < count; ++count_) {
            events_[count_] = UniqueEvt(handles[count_]);
        }
        return failure;
    }

    std::size_t Count() const { return count_; }
    UniqueEvt& operator[](std::size_t index) { return events_[index]; }

private:
    std::array<UniqueEvt, kPageSize> events_;
    std::size_t count_ = 0;
};

// Renders one event and closes it. Returns false if it cannot be rendered; only that event is lost.
bool RenderAndClose(UniqueEvt& event, EventRecordList& destination) {
    bool rendered = true;
    try {
        // A failed render still makes a record, from the buffer's earlier contents.
        static_cast<void>(RenderEventRecord(event.get(), destination));
    } catch (const std::exception& error) {
        diag::TraceException(error);
        rendered = false;
    }
    event.reset();
    return rendered;
}

}  // namespace

std::int32_t LoadChannelEvents(EventNode& node, UniqueEvt& query) {
    if (!node.IsChannel()) {
        throw std::logic_error(base::ToUtf8(node.id + L" is not a channel!"));
    }
    if (!query) {
        const std::int32_t result = OpenQuery(node, query);
        if (!query) {
            return result;
        }
    }
    EventRecordList page;
    const std::int32_t result = FetchEventBatch(node, query.get(), page);
    if (result == kFailed) {
        query.reset();
        return kFailed;
    }
    AppendPage(node, std::move(page));
    return result;
}

std::int32_t FetchEventBatch(EventNode& node, EVT_HANDLE query, EventRecordList& destination) {
    EventPage page;
    if (const std::optional<DWORD> failure = page.ReadFrom(node, query)) {
        if (failure == DWORD{ERROR_NO_MORE_ITEMS}) {
            MarkDone(node);
            return 0;
        }
        if (!WasCancelled(node, *failure)) {
            DebugTrace(L"EvtNext failed with " + std::to_wstring(*failure));
        }
        return EndStep(node, *failure);
    }
    DebugTrace(std::wstring(L"Loaded ")
                   .append(std::to_wstring(page.Count()))
                   .append(L" events to channel: ")
                   .append(node.id));
    std::uint16_t rendered = 0;
    for (std::size_t i = 0; i < page.Count(); ++i) {
        if (RenderAndClose(page[i], destination)) {
            ++rendered;
        }
    }
    return rendered;
}

}  // namespace tavrin::eventlog
