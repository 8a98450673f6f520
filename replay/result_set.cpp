#include "result_set.h"

#include <mutex>
#include <shared_mutex>

#include "channel_access.h"
#include "limits.h"
#include "query_text.h"
#include "text.h"

namespace replay {
namespace {

// Bytes, not a string: mingw-w64 frees a thread's variables before it destroys them.
thread_local wchar_t t_lastQueryError[256] = L"";

void KeepQueryError(std::wstring_view reason) {
    t_lastQueryError[reason.copy(t_lastQueryError, std::size(t_lastQueryError) - 1)] = L'\0';
}

// A log that is being traced to cannot be read.
DWORD CheckReadable(const Channel& channel) {
    if (channel.IsDirect() && channel.Config().enabled)
        return ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL;
    return ERROR_SUCCESS;
}

ChannelSelection& SelectionOf(std::vector<ChannelSelection>& selections,
                              const std::shared_ptr<Channel>& channel) {
    for (ChannelSelection& selection : selections)
        if (selection.channel == channel)
            return selection;
    selections.push_back({channel, {}, {}});
    return selections.back();
}

DWORD AddTerm(const QueryTerm& term, std::vector<ChannelSelection>& selections) {
    const ChannelResult found = FindReadableChannel(term.channel.c_str());
    if (found.channel == nullptr)
        return found.error;
    const DWORD error = CheckReadable(*found.channel);
    if (error != ERROR_SUCCESS)
        return error;
    ChannelSelection& selection = SelectionOf(selections, found.channel);
    (term.suppress ? selection.suppresses : selection.selects).push_back(term.xpath);
    return ERROR_SUCCESS;
}

}  // namespace

bool ResultSet::IsAbout(std::wstring_view foldedChannel) const {
    const std::shared_lock guard(lock_);
    return cursor_.IsAbout(foldedChannel);
}

bool ResultSet::IsReverse() const {
    const std::shared_lock guard(lock_);
    return cursor_.ReadingDirection() == ResultCursor::Direction::kReverse;
}

DWORD ResultSet::Take(std::size_t most, std::vector<EventPlace>& events) {
    const std::lock_guard guard(lock_);
    if (cursor_.IsStale())
        return ERROR_EVT_QUERY_RESULT_STALE;
    bool tooLarge = false;
    events = cursor_.Take(most, kMostBytesPerCall, tooLarge);
    if (tooLarge)
        return RPC_S_INVALID_BOUND;
    return events.empty() ? ERROR_NO_MORE_ITEMS : ERROR_SUCCESS;
}

DWORD ResultSet::Seek(ResultCursor::Origin origin, std::int64_t offset, bool strict,
                      const Bookmark* bookmark) {
    const std::lock_guard guard(lock_);
    if (cursor_.IsStale())
        return ERROR_EVT_QUERY_RESULT_STALE;
    return cursor_.Seek(origin, offset, strict, bookmark);
}

SelectionResult SelectChannels(const wchar_t* path, const wchar_t* query, bool tolerate) {
    const QueryText read = ReadQuery(path, query);
    KeepQueryError(ToWide(read.reason));
    if (read.error != ERROR_SUCCESS)
        return {{}, read.error};
    SelectionResult result;
    for (const QueryTerm& term : read.terms) {
        const DWORD error = AddTerm(term, result.selections);
        if (error == ERROR_SUCCESS)
            continue;
        if (result.error == ERROR_SUCCESS)
            result.error = error;
        if (!tolerate)
            return {{}, error};
    }
    if (!result.selections.empty())
        result.error = ERROR_SUCCESS;
    return result;
}

std::wstring LastQueryError() {
    return t_lastQueryError;
}

}  // namespace replay
