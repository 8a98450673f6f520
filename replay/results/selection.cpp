#include "replay/results/selection.h"

#include "replay/recording/channel_access.h"
#include "replay/results/query_text.h"
#include "replay/text/utf8.h"

#include <algorithm>
#include <iterator>

namespace replay::results {
namespace {

// Not a std::wstring: mingw-w64 frees thread_local variables before it runs their destructors.
thread_local wchar_t t_lastQueryError[256] = L"";

void KeepQueryError(std::wstring_view reason) {
    t_lastQueryError[reason.copy(t_lastQueryError, std::size(t_lastQueryError) - 1)] = L'\0';
}

// A direct channel cannot be read while it is enabled, and otherwise only oldest first.
DWORD CheckReadable(const recording::Channel& channel, bool reverse) {
    if (!channel.IsDirect()) {
        return ERROR_SUCCESS;
    }
    if (channel.Config().enabled) {
        return ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL;
    }
    return reverse ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

ChannelSelection& SelectionOf(std::vector<ChannelSelection>& selections,
                              const std::shared_ptr<recording::Channel>& channel) {
    for (ChannelSelection& selection : selections) {
        if (selection.channel == channel) {
            return selection;
        }
    }
    selections.push_back({channel, {}, {}});
    return selections.back();
}

DWORD AddTerm(const recording::Recording& recording, const QueryTerm& term, bool reverse,
              std::vector<ChannelSelection>& selections) {
    const recording::ChannelResult found =
        recording::FindReadableChannel(recording, term.channel.c_str());
    if (found.channel == nullptr) {
        return found.error;
    }
    const DWORD error = CheckReadable(*found.channel, reverse);
    if (error != ERROR_SUCCESS) {
        return error;
    }
    ChannelSelection& selection = SelectionOf(selections, found.channel);
    (term.suppress ? selection.suppresses : selection.selects).push_back(term.xpath);
    return ERROR_SUCCESS;
}

}  // namespace

bool ChannelSelection::SelectsAll() const {
    const auto all = [](const auto& xpath) { return xpath->MatchesAll(); };
    return suppresses.empty() && std::ranges::any_of(selects, all);
}

bool ChannelSelection::Selects(const events::ChannelLog& log, std::uint64_t ordinal) const {
    xpath::EventView event(log, ordinal);
    const auto matches = [&event](const auto& xpath) { return xpath->Matches(event); };
    return std::ranges::any_of(selects, matches) && std::ranges::none_of(suppresses, matches);
}

SelectionResult SelectChannels(const recording::Recording& recording,
                               const SelectionRequest& request) {
    const QueryText read = ReadQuery(request.path, request.query);
    KeepQueryError(text::ToWide(read.reason));
    if (read.error != ERROR_SUCCESS) {
        return {{}, read.error};
    }
    SelectionResult result;
    for (const QueryTerm& term : read.terms) {
        const DWORD error = AddTerm(recording, term, request.reverse, result.selections);
        if (error == ERROR_SUCCESS) {
            continue;
        }
        if (result.error == ERROR_SUCCESS) {
            result.error = error;
        }
        if (!request.tolerate) {
            return {{}, error};
        }
    }
    if (!result.selections.empty()) {
        result.error = ERROR_SUCCESS;
    }
    return result;
}

std::wstring LastQueryError() {
    return t_lastQueryError;
}

}  // namespace replay::results
