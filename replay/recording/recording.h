#pragma once

#include "replay/platform/lock.h"
#include "replay/recording/channel.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace replay::recording {

// The channels of one recorded computer. Thread-safe.
class Recording {
public:
    // Reads channels.xml of a directory. Without it the recording is not available.
    static std::shared_ptr<Recording> FromDirectory(const std::wstring& directory);

    // Returns the recording embedded in this library.
    static std::shared_ptr<Recording> FromResources();

    // False without a channel list. Then the service behaves as if it were not running.
    bool IsAvailable() const { return available_; }

    std::vector<std::shared_ptr<Channel>> Channels() const;

    // Returns the channel of this name, ignoring case, or null.
    std::shared_ptr<Channel> Find(std::wstring_view name) const;

    // Adds a channel or replaces the one with this name.
    void Add(ChannelConfig config, ChannelStorage storage);

    // Whether the provider counts as registered: any of its events has a message.
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
