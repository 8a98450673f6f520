// Queries, and reading the results of queries and subscriptions.

#include "replay/api/output_buffer.h"
#include "replay/results/bookmark.h"
#include "replay/results/limits.h"
#include "replay/results/reader.h"
#include "replay/results/result_set.h"
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

using Direction = results::ResultCursor::Direction;
using Origin = results::SeekTarget::Origin;

constexpr DWORD kQueryFlags = EvtQueryChannelPath | EvtQueryFilePath | EvtQueryForwardDirection |
                              EvtQueryReverseDirection | EvtQueryTolerateQueryErrors;

bool AreBoth(DWORD flags, DWORD one, DWORD other) {
    return (flags & one) != 0 && (flags & other) != 0;
}

DWORD CheckQueryFlags(DWORD flags) {
    if ((flags & ~kQueryFlags) != 0 || AreBoth(flags, EvtQueryChannelPath, EvtQueryFilePath) ||
        AreBoth(flags, EvtQueryForwardDirection, EvtQueryReverseDirection)) {
        return ERROR_INVALID_PARAMETER;
    }
    // A recording has no log files.
    return (flags & EvtQueryFilePath) != 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

DWORD OpenQuery(Call& call, LPCWSTR path, LPCWSTR query, DWORD flags, HANDLE& handle) {
    if (const DWORD error = CheckQueryFlags(flags); error != ERROR_SUCCESS) {
        return error;
    }
    Service::Get().live.CarryOutDue();
    const bool reverse = (flags & EvtQueryReverseDirection) != 0;
    results::SelectionResult result =
        results::SelectChannels(*Service::Get().CurrentRecording(),
                                {.path = path,
                                 .query = query,
                                 .reverse = reverse,
                                 .tolerate = (flags & EvtQueryTolerateQueryErrors) != 0});
    if (result.error != ERROR_SUCCESS) {
        return result.error;
    }
    const Direction direction = reverse ? Direction::kReverse : Direction::kForward;
    handle =
        call.Open(HandleKind::kQuery, std::make_shared<results::ResultSet>(results::ResultCursor(
                                          std::move(result.selections), direction)));
    return ERROR_SUCCESS;
}

std::vector<HandleTarget> EventTargets(std::vector<events::EventPlace> events, bool reverse) {
    std::vector<HandleTarget> targets;
    targets.reserve(events.size());
    for (events::EventPlace& event : events) {
        targets.push_back({HandleKind::kEvent, std::move(event.source), event.ordinal, reverse});
    }
    return targets;
}

DWORD NextEvents(Call& call, HANDLE resultSet, DWORD most, HANDLE* handles, DWORD* returned) {
    Service& service = Service::Get();
    const bool isSubscription = service.handles.Peek(resultSet).kind == HandleKind::kSubscription;
    const HandleTarget target =
        call.Use(resultSet, isSubscription ? HandleKind::kSubscription : HandleKind::kQuery);
    if (!target) {
        return ERROR_INVALID_HANDLE;
    }
    auto& reader = static_cast<results::Reader&>(*target.object);
    service.live.CarryOutDue();
    std::vector<events::EventPlace> events;
    const DWORD error = reader.Take(std::min<std::size_t>(most, results::kMostEventsPerCall),
                                    events, call.CurrentOperation());
    if (error != ERROR_SUCCESS) {
        return error;
    }
    std::vector<HandleTarget> targets = EventTargets(std::move(events), reader.IsReverse());
    service.handles.OpenEvents(targets, call.Id(), handles);
    *returned = static_cast<DWORD>(targets.size());
    call.Returns(L"Returned", targets.size());
    return ERROR_SUCCESS;
}

DWORD SeekTo(Call& call, HANDLE resultSet, LONGLONG position, HANDLE bookmark, DWORD flags) {
    const HandleTarget results = call.Use(resultSet, HandleKind::kQuery);
    if (!results) {
        return ERROR_INVALID_HANDLE;
    }
    const DWORD origin = flags & EvtSeekOriginMask;
    if (origin < EvtSeekRelativeToFirst || origin > EvtSeekRelativeToBookmark) {
        return ERROR_INVALID_PARAMETER;
    }
    constexpr Origin kOrigins[] = {Origin::kFirst, Origin::kLast, Origin::kCurrent,
                                   Origin::kBookmark};
    HandleTarget mark;
    if (origin == EvtSeekRelativeToBookmark) {
        mark = call.Use(bookmark, HandleKind::kBookmark);
        if (!mark) {
            return ERROR_INVALID_HANDLE;
        }
    }
    return static_cast<results::ResultSet&>(*results.object)
        .SeekTo({.origin = kOrigins[origin - 1],
                 .offset = position,
                 .strict = (flags & EvtSeekStrict) != 0,
                 .bookmark = static_cast<const results::Bookmark*>(mark.object.get())},
                call.CurrentOperation());
}

}  // namespace

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
        if (timeout != 0) {
            return ERROR_INVALID_PARAMETER;
        }
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
        if (size == 0 || events == nullptr || flags != 0 || returned == nullptr) {
            return ERROR_INVALID_PARAMETER;
        }
        *returned = 0;
        return NextEvents(call, resultSet, size, events, returned);
    });
}

extern "C" DWORD WINAPI EvtGetExtendedStatus(DWORD size, LPWSTR buffer, PDWORD used) {
    const Argument arguments[] = {NumberArgument(L"BufferSize", size),
                                  PointerArgument(L"Buffer", buffer)};
    DWORD status = ERROR_SUCCESS;
    const BOOL served = Serve(ApiFunction::kGetExtendedStatus, arguments, [&](Call&) {
        status = ReturnText(results::LastQueryError(), size, buffer, used);
        return status;
    });
    return served || status != ERROR_SUCCESS ? status : GetLastError();
}

}  // namespace replay::api
