#include "replay/api/output_buffer.h"
#include "replay/recording/channel_access.h"
#include "replay/service/call.h"

#include <memory>
#include <utility>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

class LogHandle final : public Object {
public:
    explicit LogHandle(std::shared_ptr<recording::Channel> channel)
        : channel_(std::move(channel)) {}
    std::shared_ptr<events::ChannelLog> Log() const { return channel_->Log(); }
    bool IsDirect() const { return channel_->IsDirect(); }
    bool IsAbout(std::wstring_view folded) const override {
        return channel_->FoldedName() == folded;
    }

private:
    std::shared_ptr<recording::Channel> channel_;
};

std::optional<std::uint64_t> FirstTime(const events::ChannelLog& log) {
    if (log.Count() == 0) {
        return std::nullopt;
    }
    return log.Facts(0).time;
}

std::optional<std::uint64_t> LastTime(const events::ChannelLog& log) {
    if (log.Count() == 0) {
        return std::nullopt;
    }
    return log.Facts(log.Count() - 1).time;
}

std::uint64_t OldestRecord(const events::ChannelLog& log) {
    return log.Count() == 0 ? 0 : log.NumberInLog(0);
}

bool IsUnknownOfDirectLogs(EVT_LOG_PROPERTY_ID id) {
    return id == EvtLogNumberOfLogRecords || id == EvtLogOldestRecordNumber || id == EvtLogFull;
}

// Writes one property. Times are Null for a log without events.
void WriteInfo(const events::ChannelLog& log, EVT_LOG_PROPERTY_ID id, VariantWriter& writer) {
    switch (id) {
        case EvtLogCreationTime: return writer.FileTime(FirstTime(log));
        case EvtLogLastAccessTime:
        case EvtLogLastWriteTime: return writer.FileTime(LastTime(log));
        case EvtLogFileSize: return writer.UInt64(log.Bytes());
        case EvtLogAttributes: return writer.UInt32(FILE_ATTRIBUTE_ARCHIVE);
        case EvtLogNumberOfLogRecords: return writer.UInt64(log.Count());
        case EvtLogOldestRecordNumber: return writer.UInt64(OldestRecord(log));
        case EvtLogFull: return writer.Boolean(false);
    }
}

DWORD GetInfo(Call& call, HANDLE log, EVT_LOG_PROPERTY_ID id, DWORD size, EVT_VARIANT* buffer,
              DWORD* used) {
    const HandleTarget target = call.Use(log, HandleKind::kLog);
    if (!target) {
        return ERROR_INVALID_HANDLE;
    }
    if (id < EvtLogCreationTime || id > EvtLogFull || used == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    Service::Get().live.CarryOutDue();
    const auto& handle = static_cast<const LogHandle&>(*target.object);
    if (handle.IsDirect() && IsUnknownOfDirectLogs(id)) {
        return ERROR_NOT_SUPPORTED;
    }
    const auto events = handle.Log();
    const DWORD error = ReturnVariants(
        1, [&](VariantWriter& writer) { WriteInfo(*events, id, writer); }, size, buffer, used);
    if (error == ERROR_SUCCESS && call.Effects().variantType) {
        buffer->Type = *call.Effects().variantType;
    }
    return error;
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtOpenLog(EVT_HANDLE session, LPCWSTR path, DWORD flags) {
    const Argument arguments[] = {HandleArgument(L"Session", session), TextArgument(L"Path", path),
                                  FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kOpenLog, arguments, [&](Call& call, HANDLE& handle) -> DWORD {
        if (flags == EvtOpenFilePath) {
            return ERROR_FILE_NOT_FOUND;  // a recording has no log files
        }
        if (flags != EvtOpenChannelPath) {
            return ERROR_INVALID_PARAMETER;
        }
        const recording::ChannelResult found =
            recording::FindReadableChannel(*Service::Get().CurrentRecording(), path);
        if (found.channel == nullptr) {
            return found.error;
        }
        handle = call.Open(HandleKind::kLog, std::make_shared<LogHandle>(found.channel));
        return ERROR_SUCCESS;
    });
}

extern "C" BOOL WINAPI EvtGetLogInfo(EVT_HANDLE log, EVT_LOG_PROPERTY_ID id, DWORD size,
                                     PEVT_VARIANT buffer, PDWORD used) {
    const Argument arguments[] = {HandleArgument(L"Log", log),
                                  NumberArgument(L"PropertyId", static_cast<std::uint64_t>(id)),
                                  NumberArgument(L"PropertyValueBufferSize", size),
                                  PointerArgument(L"PropertyValueBuffer", buffer)};
    return Serve(ApiFunction::kGetLogInfo, arguments,
                 [&](Call& call) { return GetInfo(call, log, id, size, buffer, used); });
}

}  // namespace replay::api
