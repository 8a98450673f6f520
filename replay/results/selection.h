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

// The terms of a query that concern one channel.
struct ChannelSelection {
    std::shared_ptr<recording::Channel> channel;
    std::vector<std::shared_ptr<const xpath::Expression>> selects;
    std::vector<std::shared_ptr<const xpath::Expression>> suppresses;

    // Whether every event is selected, and whether this one is.
    bool SelectsAll() const;
    bool Selects(const events::ChannelLog& log, std::uint64_t ordinal) const;
};

// What a query or a subscription asks for.
struct SelectionRequest {
    const wchar_t* path = nullptr;
    const wchar_t* query = nullptr;
    bool reverse = false;
    bool tolerate = false;  // channels that cannot be read are left out, unless none is left
};

// What is to be read, or the code of the failure: 15007, 5, 15022, 50, 15001 or 15008.
struct SelectionResult {
    std::vector<ChannelSelection> selections;
    DWORD error = ERROR_SUCCESS;
};
SelectionResult SelectChannels(const recording::Recording& recording,
                               const SelectionRequest& request);

// Why this thread's last query could not be read; empty if it could.
std::wstring LastQueryError();

}  // namespace replay::results
