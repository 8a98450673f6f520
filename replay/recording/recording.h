#pragma once

#include "replay/platform/lock.h"
#include "replay/recording/channel.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace replay::recording {

// The channels of one recorded computer. Safe on any thread.
class Recording {
public:
    // Reads channels.xml of a directory. A recording without it is not available.
    static std::shared_ptr<Recording> FromDirectory(const std::wstring& directory);

    // The recording that this library carries.
    static std::shared_ptr<Recording> FromResources();

    // False without a channel list: the service then counts as not running.
    bool IsAvailable() const { return available_; }

    std::vector<std::shared_ptr<Channel>> Channels() const;

    // The channel of this name, in any case; null when there is none.
    std::shared_ptr<Channel> Find(std::wstring_view name) const;

    // Adds a channel, or replaces the one of the same name.
    void Add(ChannelConfig config, ChannelStorage storage);

    // Whether the provider counts as registered: some event of it has a message.
    bool IsRegistered(std::wstring_view provider) const;

private:
    using StorageOf = ChannelStorage (*)(const std::wstring& place,
                                         const std::wstring& channelName);

    void ReadChannels(std::string_view document, const std::wstring& where,
                      const std::wstring& place, StorageOf storageOf);

    bool available_ = false;
    mutable platform::Lock lock_;
    std::vector<std::shared_ptr<Channel>> channels_;                 // guarded by lock_
    std::map<std::wstring, std::size_t, std::less<>> byFoldedName_;  // guarded by lock_
};

}  // namespace replay::recording
