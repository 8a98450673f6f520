#pragma once

#include "replay/recording/recording.h"

#include <memory>

#include <windows.h>

namespace replay::recording {

// A channel, or an error code.
struct ChannelResult {
    std::shared_ptr<Channel> channel;
    DWORD error = ERROR_SUCCESS;
};

// Finds a channel. Errors: 1722 without a recording, 87 if `name` is null, 15007 if unknown.
ChannelResult FindChannel(const Recording& recording, const wchar_t* name);

// Finds a channel for reading its events. Fails also with 5 if access is denied.
ChannelResult FindReadableChannel(const Recording& recording, const wchar_t* name);

}  // namespace replay::recording
