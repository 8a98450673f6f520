#pragma once

#include "replay/events/channel_log.h"
#include "replay/recording/recording.h"
#include "replay/xpath/xpath.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>

namespace replay::results {

// The terms of a query for one channel.
struct ChannelSelection {
    std::shared_ptr<recording::Channel> channel;
    std::vector<std::shared_ptr<const xpath::Expression>> selects;
    std::vector<std::shared_ptr<const xpath::Expression>> suppresses;

    // Whether every event is selected, or this event.
    bool SelectsAll() const;
    bool Selects(const events::ChannelLog& log, std::uint64_t ordinal) const;
};

// The arguments of a query or a subscription.
struct SelectionRequest {
    const wchar_t* path = nullptr;
    const wchar_t* query = nullptr;
    bool reverse = false;
    bool tolerate = false;  // omits unreadable channels, unless all are
};

// The selected channels, or an error: 15007, 5, 15022, 50, 15001 or 15008.
struct SelectionResult {
    std::vector<ChannelSelection> selections;
    DWORD error = ERROR_SUCCESS;
};
SelectionResult SelectChannels(const recording::Recording& recording,
                               const SelectionRequest& request);

// Describes the error of this thread's last query. Empty if it was valid.
std::wstring LastQueryError();

}  // namespace replay::results
