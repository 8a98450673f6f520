#include "eventlog/channels/channel_enumeration.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "diag/debug_trace.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/service/evt_handle.h"
#include "eventlog/service/failure_code.h"

namespace tavrin::eventlog {
namespace {

using diag::DebugTrace;

constexpr std::size_t kInitialPropertyBytes = 512;
constexpr int kMaxPublisherParts = 3;
// Not one of the service's four types.
constexpr std::uint32_t kTypeNeverRead = 0xFFFFFFFF;

constexpr std::uint32_t kRootFlags = node_flags::Folder | node_flags::RootFolder;
constexpr std::uint32_t kWindowsLogsFlags = node_flags::Folder | node_flags::WindowsLogsFolder;
constexpr std::uint32_t kServicesLogsFlags = node_flags::Folder | node_flags::AppsAndServicesFolder;
constexpr std::uint32_t kPublisherFlags = node_flags::Folder | node_flags::PublisherFolder;

// The last name has a blank, so the channel ForwardedEvents does not match and stands with the
// service logs.
constexpr std::wstring_view kClassicLogs[] = {L"Application", L"Security", L"Setup", L"System",
                                              L"Forwarded Events"};

bool IsClassic(std::wstring_view name) {
    return std::ranges::count(kClassicLogs, name) > 0;
}

// The channel paths of the computer, one after another.
class ChannelPaths {
public:
    explicit ChannelPaths(EVT_HANDLE channels) : channels_(channels) {}

    // Moves to the next channel. Returns false at the end.
    bool Next() {
        DWORD needed = 0;
        if (EvtNextChannelPath(channels_, 0, nullptr, &needed)) {
            return true;
        }
        switch (GetLastError()) {
            case ERROR_INSUFFICIENT_BUFFER: return Fetch(needed);
            case ERROR_NO_MORE_ITEMS: return false;
            // One failing channel must not lose the rest: go on with what the buffer holds.
            default: return true;
        }
    }

    // As the service wrote it, zero-terminated.
    const wchar_t* Buffer() const { return buffer_.c_str(); }

    // The path in the length that the service reported, terminator included.
    std::wstring Path() const { return buffer_.substr(0, size_ == 0 ? 0 : size_ - 1); }

private:
    bool Fetch(DWORD needed) {
        size_ = needed;
        buffer_.resize(std::max<std::size_t>(buffer_.size(), needed));
        return EvtNextChannelPath(channels_, needed, buffer_.data(), &size_) != FALSE;
    }

    EVT_HANDLE channels_;
    std::wstring buffer_;
    DWORD size_ = 0;  // of the path in the buffer, as reported
};

// Adds channels to a tree, each in the folders of its publisher.
class TreeFiller {
public:
    explicit TreeFiller(ChannelsTree& tree) : tree_(tree) {
        tree_.SetRootDescriptor(tree_.AddVertex(std::make_shared<EventNode>(
            L"Event Viewer (Local)", L"Event-Viewer-Local", kRootFlags)));
        windowsLogs_ = tree_.AddNode(
            std::make_shared<EventNode>(L"Windows Logs", L"Windows-Logs", kWindowsLogsFlags));
        servicesLogs_ = tree_.AddNode(std::make_shared<EventNode>(L"Applications and Service Logs",
                                                                  L"Applications-And-Service-Logs",
                                                                  kServicesLogsFlags));
    }

    void AddChannel(const std::wstring& path, const std::wstring& publisher, std::uint32_t type) {
        const bool owned = !publisher.empty();
        const VertexDescriptor parent = owned ? AddPublisherFolders(publisher) : FixedFolder(path);
        tree_.AddChildNode(
            std::make_shared<EventNode>(owned ? ChannelLeafName(path, publisher) : path, path,
                                        ChannelFlags(type)),
            parent);
    }

private:
    VertexDescriptor FixedFolder(std::wstring_view name) const {
        return IsClassic(name) ? windowsLogs_ : servicesLogs_;
    }

    // The folder of the publisher's last part. Publishers that begin alike share folders.
    VertexDescriptor AddPublisherFolders(std::wstring_view publisher) {
        SplitPublisherName(publisher, parts_);
        VertexDescriptor folder = FixedFolder(parts_.front());
        std::wstring id;
        for (const std::wstring& part : parts_) {
            if (&part != &parts_.front()) {
                id += L'-';
            }
            id += part;
            folder =
                tree_.AddChildNode(std::make_shared<EventNode>(part, id, kPublisherFlags), folder);
        }
        return folder;
    }

    ChannelsTree& tree_;
    VertexDescriptor windowsLogs_;
    VertexDescriptor servicesLogs_;
    std::vector<std::wstring> parts_;
};

void AddEveryChannel(EVT_HANDLE channels, TreeFiller& filler,
                     const std::atomic<bool>& stopRequested) {
    ChannelPaths paths(channels);
    std::wstring publisher;
    // Not reset per channel: if a type cannot be read, the previous one stays.
    std::uint32_t type = kTypeNeverRead;
    while (!stopRequested.load() && paths.Next()) {
        const UniqueEvt config(EvtOpenChannelConfig(nullptr, paths.Buffer(), 0));
        if (!config) {
            const DWORD error = GetLastError();
            DebugTrace(std::wstring(L"Failed to open config for ")
                           .append(paths.Buffer())
                           .append(L": ")
                           .append(std::to_wstring(error))
                           .append(L"\n"));
            continue;
        }
        publisher.clear();
        // A channel is shown with whatever could be read.
        static_cast<void>(ReadChannelConfig(config.get(), publisher, type));
        filler.AddChannel(paths.Path(), publisher, type);
    }
}

// One configuration property. The buffer holds the value and, behind it, what it points to.
class ChannelProperty {
public:
    // Returns 0 or the code of the failure.
    std::uint32_t Read(EVT_HANDLE config, EVT_CHANNEL_CONFIG_PROPERTY_ID id,
                       std::wstring_view name) {
        DWORD used = 0;
        if (Get(config, id, used)) {
            return ERROR_SUCCESS;
        }
        const DWORD error = GetLastError();
        if (error != ERROR_INSUFFICIENT_BUFFER) {
            return FailureCode(error);
        }
        bytes_.resize(std::max<std::size_t>(bytes_.size(), used));
        if (Get(config, id, used)) {
            return ERROR_SUCCESS;
        }
        const DWORD again = GetLastError();
        DebugTrace(std::wstring(L"EvtGetChannelConfigProperty(")
                       .append(name)
                       .append(L") failed with ")
                       .append(std::to_wstring(again)));
        return FailureCode(again);
    }

    const EVT_VARIANT& Value() const {
        return *reinterpret_cast<const EVT_VARIANT*>(bytes_.data());
    }

private:
    bool Get(EVT_HANDLE config, EVT_CHANNEL_CONFIG_PROPERTY_ID id, DWORD& used) {
        return EvtGetChannelConfigProperty(config, id, 0, static_cast<DWORD>(bytes_.size()),
                                           reinterpret_cast<EVT_VARIANT*>(bytes_.data()),
                                           &used) != FALSE;
    }

    std::vector<std::byte> bytes_ = std::vector<std::byte>(kInitialPropertyBytes);
};

}  // namespace

std::uint32_t EventWrapper::BuildChannlesTree(ChannelsTree& tree) {
    DebugTrace(std::wstring(L"EventWrapper::BuildChannlesTree starting..."));
    TreeFiller filler(tree);
    const UniqueEvt channels(EvtOpenChannelEnum(nullptr, 0));
    if (!channels) {
        const DWORD error = GetLastError();
        DebugTrace(std::wstring(L"EvtOpenChannelEnum failed with ")
                       .append(std::to_wstring(error))
                       .append(L"\n"));
        return 1;
    }
    AddEveryChannel(channels.get(), filler, stopRequested_);
    DebugTrace(std::wstring(L"EventWrapper::BuildChannlesTree completed."));
    return 0;
}

int SplitPublisherName(std::wstring_view publisher, std::vector<std::wstring>& parts) {
    parts.clear();
    std::wstring part;
    for (const wchar_t unit : publisher) {
        if (unit == L'-' && parts.size() + 1 < kMaxPublisherParts) {
            parts.push_back(std::exchange(part, {}));
        } else {
            part += unit;
        }
    }
    if (!part.empty()) {
        parts.push_back(std::move(part));
    }
    return std::min(static_cast<int>(parts.size()), kMaxPublisherParts);
}

std::uint32_t ReadChannelConfig(EVT_HANDLE config, std::wstring& publisher, std::uint32_t& type) {
    ChannelProperty property;
    std::uint32_t error =
        property.Read(config, EvtChannelConfigOwningPublisher, L"OwningPublisher");
    if (error != ERROR_SUCCESS) {
        return error;
    }
    if (const wchar_t* name = property.Value().StringVal) {
        publisher = name;
    }
    error = property.Read(config, EvtChannelConfigType, L"ChannelType");
    if (error != ERROR_SUCCESS) {
        return error;
    }
    type = property.Value().UInt32Val;
    return ERROR_SUCCESS;
}

std::wstring ChannelLeafName(std::wstring_view path, std::wstring_view publisher) {
    if (!path.starts_with(publisher)) {
        return std::wstring(path);
    }
    std::size_t separator = path.rfind(L'/');
    if (separator == std::wstring_view::npos) {
        separator = path.rfind(L'-');
    }
    return std::wstring(separator == std::wstring_view::npos ? path : path.substr(separator + 1));
}

std::uint32_t ChannelFlags(std::uint32_t type) {
    constexpr std::uint32_t kTypeFlags[] = {
        node_flags::AdminChannel,  // EvtChannelTypeAdmin
        node_flags::OperationalChannel,
        node_flags::AnalyticChannel,
        node_flags::DebugChannel,
    };
    return node_flags::Channel | (type < std::size(kTypeFlags) ? kTypeFlags[type] : 0);
}

}  // namespace tavrin::eventlog
