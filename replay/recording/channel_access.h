#pragma once

#include "replay/recording/recording.h"

#include <memory>

#include <windows.h>

namespace replay::recording {

// A channel, or why it cannot be had.
struct ChannelResult {
    std::shared_ptr<Channel> channel;
    DWORD error = ERROR_SUCCESS;
};

// The channel of this name: 1722 without a recording, 87 without a name, 15007 if unknown.
ChannelResult FindChannel(const Recording& recording, const wchar_t* name);

// The same for one whose events are to be read: 5 if that is denied.
ChannelResult FindReadableChannel(const Recording& recording, const wchar_t* name);

}  // namespace replay::recording
