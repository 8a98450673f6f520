#include "eventlog/event_loading.h"

#include <array>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>

#include "base/utf8.h"
#include "diag/debug_trace.h"
#include "eventlog/event_rendering.h"
#include "eventlog/load_protocol.h"

namespace tavrin::eventlog {
namespace {

using diag::DebugTrace;

constexpr std::size_t kPageSize = 128;
constexpr std::int32_t kFailed = -1;
constexpr DWORD kNewestFirst = EvtQueryChannelPath | EvtQueryReverseDirection;

// Runs the node's query; true with the cursor before the newest event.
bool OpenQuery(EventNode& node, UniqueEvt& query) {
    query = UniqueEvt(node.query.empty()
                          ? EvtQuery(nullptr, node.id.c_str(), L"*", kNewestFirst)
                          : EvtQuery(nullptr, nullptr, node.query.c_str(), kNewestFirst));
    if (!query) {
        StoreLoadResult(node, GetLastError());
        return false;
    }
    if (!EvtSeek(query.get(), 0, nullptr, 0, EvtSeekRelativeToFirst)) {
        StoreLoadResult(node, GetLastError());
        query.reset();
        return false;
    }
    return true;
}

// The events of one page. They are owned before anything else can fail.
class EventPage {
public:
    // Returns the code of a call that fails. It can be 0.
    std::optional<DWORD> Read(EVT_HANDLE query) {
        std::array<EVT_HANDLE, kPageSize> handles{};
        DWORD count = 0;
        if (!EvtNext(query, static_cast<DWORD>(handles.size()), handles.data(), INFINITE, 0,
                     &count)) {
            return GetLastError();
        }
        for (; count_ < count; ++count_) {
            events_[count_] = UniqueEvt(handles[count_]);
        }
        return std::nullopt;
    }

    std::size_t Count() const { return count_; }
    UniqueEvt& operator[](std::size_t index) { return events_[index]; }

private:
    std::array<UniqueEvt, kPageSize> events_;
    std::size_t count_ = 0;
};

// Renders one event and closes it. An event that cannot be rendered costs only itself.
bool RenderAndClose(UniqueEvt& event, EventRecordList& destination) {
    bool rendered = true;
    try {
        // A render that failed still gives a record, of what the buffer held before.
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
    if (!query && !OpenQuery(node, query)) {
        return kFailed;
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
    if (const std::optional<DWORD> failure = page.Read(query)) {
        if (failure == DWORD{ERROR_NO_MORE_ITEMS}) {
            MarkDone(node);
            return 0;
        }
        DebugTrace(L"EvtNext failed with " + std::to_wstring(*failure));
        StoreLoadResult(node, *failure);
        return kFailed;
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
