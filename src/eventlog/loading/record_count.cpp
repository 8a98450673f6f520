#include "eventlog/loading/record_count.h"

#include <cstdint>
#include <exception>
#include <stdexcept>

#include "diag/debug_trace.h"
#include "eventlog/loading/worker_messages.h"
#include "eventlog/service/evt_handle.h"

namespace tavrin::eventlog {
namespace {

std::uint64_t ReadRecordCount(const std::wstring& path) {
    const UniqueEvt log(EvtOpenLog(nullptr, path.c_str(), EvtOpenChannelPath));
    if (!log) {
        throw std::runtime_error("EvtOpenLog failed");
    }
    EVT_VARIANT value{};
    DWORD used = 0;
    if (!EvtGetLogInfo(log.get(), EvtLogNumberOfLogRecords, sizeof(value), &value, &used)) {
        throw std::runtime_error("EvtGetLogInfo failed");
    }
    if (value.Type != EvtVarTypeUInt64) {
        throw std::runtime_error("Unexpected variant type");
    }
    return value.UInt64Val;
}

}  // namespace

void CountChannelRecords(const RecordCountRequest& request) noexcept {
    try {
        const WPARAM count = ReadRecordCount(request.path);
        PostMessageW(request.window, WM_RECORD_COUNT_READY, count, request.parameter);
    } catch (const std::exception& error) {
        diag::TraceException(error);
    }
}

}  // namespace tavrin::eventlog
