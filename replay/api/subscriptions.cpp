#include "replay/results/bookmark.h"
#include "replay/results/seek.h"
#include "replay/results/selection.h"
#include "replay/results/subscription.h"
#include "replay/service/call.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

// As on Windows, direct channels cannot be subscribed to.
DWORD CheckSubscribable(const std::vector<results::ChannelSelection>& selections) {
    const bool direct = std::ranges::any_of(
        selections,
        [](const results::ChannelSelection& selection) { return selection.channel->IsDirect(); });
    return direct ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

// Moves the cursor to the start of the subscription.
DWORD GoToOrigin(results::ResultCursor& cursor, const results::Bookmark* bookmark, DWORD flags) {
    switch (flags & EvtSubscribeOriginMask) {
        case EvtSubscribeToFutureEvents: cursor.GoToEnd(); return ERROR_SUCCESS;
        case EvtSubscribeStartAtOldestRecord: return ERROR_SUCCESS;
        default: break;
    }
    const bool found = GoBehind(cursor, *bookmark);
    return found || (flags & EvtSubscribeStrict) == 0 ? ERROR_SUCCESS : ERROR_NOT_FOUND;
}

struct SubscriptionRequest {
    HANDLE signal;
    LPCWSTR path;
    LPCWSTR query;
    HANDLE bookmark;
    const void* callback;
    DWORD flags;
};

DWORD CheckRequest(const SubscriptionRequest& request) {
    const bool isPull = request.signal != nullptr;
    const bool isPush = request.callback != nullptr;
    if (isPull == isPush || (request.flags & EvtSubscribeOriginMask) == 0) {
        return ERROR_INVALID_PARAMETER;
    }
    return isPush ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

results::SelectionResult Select(const SubscriptionRequest& request) {
    Service::Get().live.CarryOutDue();
    results::SelectionResult result = results::SelectChannels(
        *Service::Get().CurrentRecording(),
        {.path = request.path,
         .query = request.query,
         .tolerate = (request.flags & EvtSubscribeTolerateQueryErrors) != 0});
    if (result.error == ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL) {
        result.error = ERROR_NOT_SUPPORTED;
    }
    if (result.error == ERROR_SUCCESS) {
        result.error = CheckSubscribable(result.selections);
    }
    return result;
}

DWORD OpenSubscription(Call& call, const SubscriptionRequest& request, HANDLE& handle) {
    if (const DWORD error = CheckRequest(request); error != ERROR_SUCCESS) {
        return error;
    }
    HandleTarget mark;
    if ((request.flags & EvtSubscribeOriginMask) == EvtSubscribeStartAfterBookmark) {
        mark = call.Use(request.bookmark, HandleKind::kBookmark);
        if (!mark) {
            return ERROR_INVALID_HANDLE;
        }
    }
    results::SelectionResult result = Select(request);
    if (result.error != ERROR_SUCCESS) {
        return result.error;
    }
    results::ResultCursor cursor(std::move(result.selections),
                                 results::ResultCursor::Direction::kForward);
    const auto* bookmark = static_cast<const results::Bookmark*>(mark.object.get());
    if (const DWORD error = GoToOrigin(cursor, bookmark, request.flags); error != ERROR_SUCCESS) {
        return error;
    }
    const auto subscription =
        std::make_shared<results::Subscription>(std::move(cursor), request.signal);
    handle = call.Open(HandleKind::kSubscription, subscription);
    Service::Get().live.Watch(subscription);
    return ERROR_SUCCESS;
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtSubscribe(EVT_HANDLE session, HANDLE signal, LPCWSTR path,
                                          LPCWSTR query, EVT_HANDLE bookmark, PVOID context,
                                          EVT_SUBSCRIBE_CALLBACK callback, DWORD flags) {
    const void* const code = reinterpret_cast<const void*>(callback);
    const Argument arguments[] = {
        HandleArgument(L"Session", session),   PointerArgument(L"SignalEvent", signal),
        TextArgument(L"ChannelPath", path),    TextArgument(L"Query", query),
        HandleArgument(L"Bookmark", bookmark), PointerArgument(L"Context", context),
        PointerArgument(L"Callback", code),    FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kSubscribe, arguments, [&](Call& call, HANDLE& handle) {
        return OpenSubscription(call, {signal, path, query, bookmark, code, flags}, handle);
    });
}

}  // namespace replay::api
