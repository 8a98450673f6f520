#include "replay/recording/recording.h"

#include "replay/platform/embedded_files.h"
#include "replay/platform/notice.h"
#include "replay/recording/channel_list.h"
#include "replay/text/channel_name.h"
#include "replay/text/utf8.h"

#include <algorithm>
#include <mutex>
#include <shared_mutex>
#include <utility>

namespace replay::recording {
namespace {

constexpr wchar_t kChannelList[] = L"channels.xml";
constexpr wchar_t kExtension[] = L".xml";

ChannelStorage StorageInDirectory(const std::wstring& directory, const std::wstring& channelName) {
    return {directory + L"\\" + text::ChannelFileStem(channelName) + kExtension, {}};
}

ChannelStorage StorageInResources(const std::wstring&, const std::wstring& channelName) {
    return {{},
            platform::FindEmbeddedFile(text::ChannelFileStem(channelName) + kExtension)
                .value_or(std::string_view())};
}

}  // namespace

std::shared_ptr<Recording> Recording::FromDirectory(const std::wstring& directory) {
    auto recording = std::make_shared<Recording>();
    const std::wstring list = directory + L"\\" + kChannelList;
    const auto document = platform::ReadWholeFile(list);
    if (document) {
        recording->ReadChannels(*document, list, directory, StorageInDirectory);
    } else {
        platform::Notice(list + L": cannot be read; the service counts as not running");
    }
    return recording;
}

std::shared_ptr<Recording> Recording::FromResources() {
    auto recording = std::make_shared<Recording>();
    const auto document = platform::FindEmbeddedFile(kChannelList);
    if (document) {
        recording->ReadChannels(*document, kChannelList, {}, StorageInResources);
    } else {
        platform::Notice(L"no recording is built in; the service counts as not running");
    }
    return recording;
}

void Recording::ReadChannels(std::string_view document, const std::wstring& where,
                             const std::wstring& place, StorageOf storageOf) {
    available_ = true;
    const auto damage = ReadChannelList(document, [&](ChannelConfig config) {
        ChannelStorage storage = storageOf(place, config.name);
        Add(std::move(config), std::move(storage));
    });
    if (damage) {
        platform::Notice(where + L": byte " + std::to_wstring(damage->offset) + L": " +
                         text::ToWide(damage->reason) + L"; the channels after it are left out");
    }
}

std::vector<std::shared_ptr<Channel>> Recording::Channels() const {
    const std::shared_lock guard(lock_);
    return channels_;
}

std::shared_ptr<Channel> Recording::Find(std::wstring_view name) const {
    const std::wstring folded = text::FoldCase(name);
    const std::shared_lock guard(lock_);
    const auto entry = byFoldedName_.find(folded);
    return entry == byFoldedName_.end() ? nullptr : channels_[entry->second];
}

void Recording::Add(ChannelConfig config, ChannelStorage storage) {
    auto channel = std::make_shared<Channel>(std::move(config), std::move(storage));
    const std::lock_guard guard(lock_);
    const auto [entry, added] = byFoldedName_.try_emplace(channel->FoldedName(), channels_.size());
    if (added) {
        channels_.push_back(std::move(channel));
    } else {
        channels_[entry->second] = std::move(channel);
    }
}

// Searches the channels that are already read first, because most providers are found there.
bool Recording::IsRegistered(std::wstring_view provider) const {
    const std::string name = text::ToUtf8(provider);
    auto channels = Channels();
    std::stable_partition(channels.begin(), channels.end(),
                          [](const auto& channel) { return channel->IsRead(); });
    return std::ranges::any_of(channels, [&name](const auto& channel) {
        return channel->LogAsSeen()->HasMessageOf(name);
    });
}

}  // namespace replay::recording
