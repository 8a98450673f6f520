// Queries, subscriptions and the walk through their results.

#include <windows.h>
#include <winevt.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "bookmark.h"
#include "limits.h"
#include "output_buffer.h"
#include "result_set.h"
#include "serve.h"
#include "subscription.h"

namespace replay {
namespace {

using Direction = ResultCursor::Direction;
using Origin = ResultCursor::Origin;

constexpr DWORD kQueryFlags = EvtQueryChannelPath | EvtQueryFilePath | EvtQueryForwardDirection |
                              EvtQueryReverseDirection | EvtQueryTolerateQueryErrors;

bool AreBoth(DWORD flags, DWORD one, DWORD other) {
    return (flags & one) != 0 && (flags & other) != 0;
}

DWORD CheckQueryFlags(DWORD flags) {
    if ((flags & ~kQueryFlags) != 0 || AreBoth(flags, EvtQueryChannelPath, EvtQueryFilePath) ||
        AreBoth(flags, EvtQueryForwardDirection, EvtQueryReverseDirection))
        return ERROR_INVALID_PARAMETER;
    // A recording holds channels, not the files of exported logs.
    return (flags & EvtQueryFilePath) != 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

DWORD OpenQuery(Call& call, LPCWSTR path, LPCWSTR query, DWORD flags, HANDLE& handle) {
    if (const DWORD error = CheckQueryFlags(flags); error != ERROR_SUCCESS)
        return error;
    Service::Get().live.CarryOutDue();
    SelectionResult result =
        SelectChannels(path, query, (flags & EvtQueryTolerateQueryErrors) != 0);
    if (result.error != ERROR_SUCCESS)
        return result.error;
    const Direction direction =
        (flags & EvtQueryReverseDirection) != 0 ? Direction::kReverse : Direction::kForward;
    handle = call.Open(HandleKind::kQuery, std::make_shared<ResultSet>(ResultCursor(
                                               std::move(result.selections), direction)));
    return ERROR_SUCCESS;
}

DWORD TakeEvents(const HandleTarget& target, std::size_t most, std::vector<EventPlace>& events,
                 bool& reverse) {
    if (target.kind == HandleKind::kSubscription)
        return static_cast<Subscription&>(*target.object).Take(most, events);
    auto& results = static_cast<ResultSet&>(*target.object);
    reverse = results.IsReverse();
    Service::Get().live.CarryOutDue();
    return results.Take(most, events);
}

DWORD NextEvents(Call& call, HANDLE resultSet, DWORD most, HANDLE* handles, DWORD* returned) {
    Service& service = Service::Get();
    const bool isSubscription = service.handles.Peek(resultSet).kind == HandleKind::kSubscription;
    const HandleTarget target =
        call.Use(resultSet, isSubscription ? HandleKind::kSubscription : HandleKind::kQuery);
    if (!target)
        return ERROR_INVALID_HANDLE;
    std::vector<EventPlace> events;
    bool reverse = false;
    const DWORD error =
        TakeEvents(target, std::min<std::size_t>(most, kMostEventsPerCall), events, reverse);
    if (error != ERROR_SUCCESS)
        return error;
    service.handles.OpenEvents(events, reverse, call.Id(), handles);
    *returned = static_cast<DWORD>(events.size());
    call.Handled(events.size());
    call.Returns(L"Returned", events.size());
    return ERROR_SUCCESS;
}

DWORD SeekTo(Call& call, HANDLE resultSet, LONGLONG position, HANDLE bookmark, DWORD flags) {
    const HandleTarget results = call.Use(resultSet, HandleKind::kQuery);
    if (!results)
        return ERROR_INVALID_HANDLE;
    const DWORD origin = flags & EvtSeekOriginMask;
    if (origin < EvtSeekRelativeToFirst || origin > EvtSeekRelativeToBookmark)
        return ERROR_INVALID_PARAMETER;
    constexpr Origin kOrigins[] = {Origin::kFirst, Origin::kLast, Origin::kCurrent,
                                   Origin::kBookmark};
    HandleTarget mark;
    if (origin == EvtSeekRelativeToBookmark) {
        mark = call.Use(bookmark, HandleKind::kBookmark);
        if (!mark)
            return ERROR_INVALID_HANDLE;
    }
    return static_cast<ResultSet&>(*results.object)
        .Seek(kOrigins[origin - 1], position, (flags & EvtSeekStrict) != 0,
              static_cast<const Bookmark*>(mark.object.get()));
}

// Subscriptions to logs that are written to directly are not served.
DWORD CheckSubscribable(const std::vector<ChannelSelection>& selections) {
    const bool direct = std::ranges::any_of(selections, [](const ChannelSelection& selection) {
        return selection.channel->IsDirect();
    });
    return direct ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

// Moves to where the subscription begins.
DWORD GoToOrigin(ResultCursor& cursor, const Bookmark* bookmark, DWORD flags) {
    switch (flags & EvtSubscribeOriginMask) {
        case EvtSubscribeToFutureEvents: cursor.GoToEnd(); return ERROR_SUCCESS;
        case EvtSubscribeStartAtOldestRecord: return ERROR_SUCCESS;
        default: break;
    }
    const bool found = cursor.GoBehind(*bookmark);
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

DWORD OpenSubscription(Call& call, const SubscriptionRequest& request, HANDLE& handle) {
    const bool isPull = request.signal != nullptr;
    const bool isPush = request.callback != nullptr;
    const DWORD origin = request.flags & EvtSubscribeOriginMask;
    if (isPull == isPush || origin == 0)
        return ERROR_INVALID_PARAMETER;
    if (isPush)
        return ERROR_NOT_SUPPORTED;
    HandleTarget mark;
    if (origin == EvtSubscribeStartAfterBookmark) {
        mark = call.Use(request.bookmark, HandleKind::kBookmark);
        if (!mark)
            return ERROR_INVALID_HANDLE;
    }
    Service::Get().live.CarryOutDue();
    const bool tolerate = (request.flags & EvtSubscribeTolerateQueryErrors) != 0;
    SelectionResult result = SelectChannels(request.path, request.query, tolerate);
    if (result.error == ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL)
        return ERROR_NOT_SUPPORTED;
    if (result.error == ERROR_SUCCESS)
        result.error = CheckSubscribable(result.selections);
    if (result.error != ERROR_SUCCESS)
        return result.error;
    ResultCursor cursor(std::move(result.selections), Direction::kForward);
    const DWORD error =
        GoToOrigin(cursor, static_cast<const Bookmark*>(mark.object.get()), request.flags);
    if (error != ERROR_SUCCESS)
        return error;
    const auto subscription = std::make_shared<Subscription>(std::move(cursor), request.signal);
    handle = call.Open(HandleKind::kSubscription, subscription);
    Service::Get().live.Watch(subscription);
    return ERROR_SUCCESS;
}

}  // namespace
}  // namespace replay

using namespace replay;

extern "C" EVT_HANDLE WINAPI EvtQuery(EVT_HANDLE session, LPCWSTR path, LPCWSTR query,
                                      DWORD flags) {
    const Argument arguments[] = {HandleArgument(L"Session", session), TextArgument(L"Path", path),
                                  TextArgument(L"Query", query), FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kQuery, arguments, [&](Call& call, HANDLE& handle) {
        return OpenQuery(call, path, query, flags, handle);
    });
}

extern "C" BOOL WINAPI EvtSeek(EVT_HANDLE resultSet, LONGLONG position, EVT_HANDLE bookmark,
                               DWORD timeout, DWORD flags) {
    const Argument arguments[] = {
        HandleArgument(L"ResultSet", resultSet), SignedArgument(L"Position", position),
        HandleArgument(L"Bookmark", bookmark), TimeoutArgument(L"Timeout", timeout),
        FlagsArgument(L"Flags", flags)};
    return Serve(ApiFunction::kSeek, arguments, [&](Call& call) -> DWORD {
        if (timeout != 0)
            return ERROR_INVALID_PARAMETER;
        return SeekTo(call, resultSet, position, bookmark, flags);
    });
}

extern "C" BOOL WINAPI EvtNext(EVT_HANDLE resultSet, DWORD size, EVT_HANDLE* events, DWORD timeout,
                               DWORD flags, PDWORD returned) {
    const Argument arguments[] = {
        HandleArgument(L"ResultSet", resultSet), NumberArgument(L"EventArraySize", size),
        PointerArgument(L"EventArray", events), TimeoutArgument(L"Timeout", timeout),
        FlagsArgument(L"Flags", flags)};
    return Serve(ApiFunction::kNext, arguments, [&](Call& call) -> DWORD {
        if (size == 0 || events == nullptr || flags != 0 || returned == nullptr)
            return ERROR_INVALID_PARAMETER;
        *returned = 0;
        return NextEvents(call, resultSet, size, events, returned);
    });
}

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

extern "C" DWORD WINAPI EvtGetExtendedStatus(DWORD size, LPWSTR buffer, PDWORD used) {
    const Argument arguments[] = {NumberArgument(L"BufferSize", size),
                                  PointerArgument(L"Buffer", buffer)};
    DWORD status = ERROR_SUCCESS;
    const BOOL served = Serve(ApiFunction::kGetExtendedStatus, arguments, [&](Call&) {
        status = ReturnText(LastQueryError(), size, buffer, used);
        return status;
    });
    return served || status != ERROR_SUCCESS ? status : ::GetLastError();
}
