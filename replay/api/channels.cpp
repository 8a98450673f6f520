// The channel list and the configuration of channels.

#include "replay/api/output_buffer.h"
#include "replay/platform/lock.h"
#include "replay/recording/channel_access.h"
#include "replay/service/call.h"
#include "replay/text/channel_name.h"

#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

class ChannelEnum final : public Object {
public:
    explicit ChannelEnum(std::vector<std::shared_ptr<recording::Channel>> channels)
        : channels_(std::move(channels)) {}

    // A path that does not fit is returned by the next call.
    DWORD Next(DWORD available, wchar_t* buffer, DWORD* used) {
        const std::size_t at = at_;
        if (at == channels_.size()) {
            return ERROR_NO_MORE_ITEMS;
        }
        const DWORD error = ReturnText(channels_[at]->Config().name, available, buffer, used);
        if (error == ERROR_SUCCESS) {
            at_ = at + 1;
        }
        return error;
    }

private:
    const std::vector<std::shared_ptr<recording::Channel>> channels_;
    std::atomic<std::size_t> at_{0};
};

class ConfigHandle final : public Object {
public:
    explicit ConfigHandle(std::shared_ptr<recording::Channel> channel)
        : channel_(std::move(channel)) {}
    const recording::ChannelConfig& Config() const { return channel_->Config(); }
    bool IsAbout(std::wstring_view folded) const override {
        return channel_->FoldedName() == folded;
    }

private:
    std::shared_ptr<recording::Channel> channel_;
};

constexpr std::uint64_t kMaxLogSize = 1'052'672;
constexpr std::wstring_view kAccess =
    L"O:BAG:SYD:(A;;0xf0007;;;SY)(A;;0x7;;;BA)(A;;0x3;;;IU)(A;;0x1;;;S-1-5-32-573)";

std::wstring LogFilePath(const std::wstring& channel) {
    return L"%SystemRoot%\\System32\\Winevt\\Logs\\" + text::ChannelFileStem(channel) + L".evtx";
}

// Writes one property. Returns false if this service does not support it.
bool WriteProperty(const recording::ChannelConfig& config, EVT_CHANNEL_CONFIG_PROPERTY_ID id,
                   VariantWriter& writer) {
    switch (id) {
        case EvtChannelConfigEnabled: writer.Boolean(config.enabled); return true;
        case EvtChannelConfigIsolation:
            writer.UInt32(EvtChannelIsolationTypeApplication);
            return true;
        case EvtChannelConfigType:
            writer.UInt32(static_cast<std::uint32_t>(config.type));
            return true;
        case EvtChannelConfigOwningPublisher:
            config.publisher.empty() ? writer.Null() : writer.String(config.publisher);
            return true;
        case EvtChannelConfigClassicEventlog: writer.Boolean(config.publisher.empty()); return true;
        case EvtChannelConfigAccess: writer.String(kAccess); return true;
        case EvtChannelLoggingConfigMaxSize: writer.UInt64(kMaxLogSize); return true;
        case EvtChannelLoggingConfigLogFilePath:
            writer.String(LogFilePath(config.name));
            return true;
        default: return false;
    }
}

DWORD GetProperty(Call& call, const recording::ChannelConfig& config,
                  EVT_CHANNEL_CONFIG_PROPERTY_ID id, DWORD available, EVT_VARIANT* buffer,
                  DWORD* used) {
    VariantWriter probe(nullptr, 1);
    if (!WriteProperty(config, id, probe)) {
        return ERROR_NOT_SUPPORTED;
    }
    const DWORD error = ReturnVariants(
        1, [&](VariantWriter& writer) { WriteProperty(config, id, writer); }, available, buffer,
        used);
    if (error == ERROR_SUCCESS && call.Effects().variantType) {
        buffer->Type = *call.Effects().variantType;
    }
    return error;
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtOpenChannelEnum(EVT_HANDLE session, DWORD flags) {
    const Argument arguments[] = {HandleArgument(L"Session", session),
                                  FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kOpenChannelEnum, arguments,
                       [&](Call& call, HANDLE& handle) -> DWORD {
                           if (flags != 0) {
                               return ERROR_INVALID_PARAMETER;
                           }
                           const auto recording = Service::Get().CurrentRecording();
                           if (!recording->IsAvailable()) {
                               return RPC_S_SERVER_UNAVAILABLE;
                           }
                           handle = call.Open(HandleKind::kChannelEnum,
                                              std::make_shared<ChannelEnum>(recording->Channels()));
                           return ERROR_SUCCESS;
                       });
}

extern "C" BOOL WINAPI EvtNextChannelPath(EVT_HANDLE channelEnum, DWORD size, LPWSTR buffer,
                                          PDWORD used) {
    const Argument arguments[] = {HandleArgument(L"ChannelEnum", channelEnum),
                                  NumberArgument(L"ChannelPathBufferSize", size),
                                  PointerArgument(L"ChannelPathBuffer", buffer)};
    return Serve(ApiFunction::kNextChannelPath, arguments, [&](Call& call) -> DWORD {
        const HandleTarget target = call.Use(channelEnum, HandleKind::kChannelEnum);
        if (!target) {
            return ERROR_INVALID_HANDLE;
        }
        if (used == nullptr) {
            return ERROR_INVALID_PARAMETER;
        }
        const DWORD error = static_cast<ChannelEnum&>(*target.object).Next(size, buffer, used);
        if (error != ERROR_NO_MORE_ITEMS) {
            call.Returns(L"ChannelPathBufferUsed", *used);
        }
        return error;
    });
}

extern "C" EVT_HANDLE WINAPI EvtOpenChannelConfig(EVT_HANDLE session, LPCWSTR path, DWORD flags) {
    const Argument arguments[] = {HandleArgument(L"Session", session),
                                  TextArgument(L"ChannelPath", path),
                                  FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kOpenChannelConfig, arguments,
                       [&](Call& call, HANDLE& handle) -> DWORD {
                           if (flags != 0) {
                               return ERROR_INVALID_PARAMETER;
                           }
                           const recording::ChannelResult found =
                               recording::FindChannel(*Service::Get().CurrentRecording(), path);
                           if (found.channel == nullptr) {
                               return found.error;
                           }
                           handle = call.Open(HandleKind::kChannelConfig,
                                              std::make_shared<ConfigHandle>(found.channel));
                           return ERROR_SUCCESS;
                       });
}

extern "C" BOOL WINAPI EvtGetChannelConfigProperty(EVT_HANDLE config,
                                                   EVT_CHANNEL_CONFIG_PROPERTY_ID id, DWORD flags,
                                                   DWORD size, PEVT_VARIANT buffer, PDWORD used) {
    const Argument arguments[] = {HandleArgument(L"ChannelConfig", config),
                                  NumberArgument(L"PropertyId", static_cast<std::uint64_t>(id)),
                                  FlagsArgument(L"Flags", flags),
                                  NumberArgument(L"PropertyValueBufferSize", size),
                                  PointerArgument(L"PropertyValueBuffer", buffer)};
    return Serve(ApiFunction::kGetChannelConfigProperty, arguments, [&](Call& call) -> DWORD {
        const HandleTarget target = call.Use(config, HandleKind::kChannelConfig);
        if (!target) {
            return ERROR_INVALID_HANDLE;
        }
        if (flags != 0 || id < 0 || id >= EvtChannelConfigPropertyIdEND || used == nullptr) {
            return ERROR_INVALID_PARAMETER;
        }
        return GetProperty(call, static_cast<const ConfigHandle&>(*target.object).Config(), id,
                           size, buffer, used);
    });
}

}  // namespace replay::api
