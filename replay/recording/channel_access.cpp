#include "replay/recording/channel_access.h"

#include <utility>

namespace replay::recording {

ChannelResult FindChannel(const Recording& recording, const wchar_t* name) {
    if (!recording.IsAvailable()) {
        return {nullptr, RPC_S_SERVER_UNAVAILABLE};
    }
    if (name == nullptr) {
        return {nullptr, ERROR_INVALID_PARAMETER};
    }
    auto channel = recording.Find(name);
    if (channel == nullptr) {
        return {nullptr, ERROR_EVT_CHANNEL_NOT_FOUND};
    }
    return {std::move(channel), ERROR_SUCCESS};
}

ChannelResult FindReadableChannel(const Recording& recording, const wchar_t* name) {
    ChannelResult found = FindChannel(recording, name);
    if (found.channel != nullptr && found.channel->Config().denied) {
        return {nullptr, ERROR_ACCESS_DENIED};
    }
    return found;
}

}  // namespace replay::recording
