#pragma once

#include "replay/recording/recording.h"

#include <memory>

#include <windows.h>

namespace replay::recording {

// A channel, or the code of the failure.
struct ChannelResult {
    std::shared_ptr<Channel> channel;
    DWORD error = ERROR_SUCCESS;
};

// Finds a channel by its name: 1722 without a recording, 87 without a name, 15007 if unknown.
ChannelResult FindChannel(const Recording& recording, const wchar_t* name);

// Finds a channel whose events are to be read: also 5 if access is denied.
ChannelResult FindReadableChannel(const Recording& recording, const wchar_t* name);

}  // namespace replay::recording
