#include "replay/replay_control.h"
#include "replay/script/script_line.h"
#include "replay/service/service.h"

namespace replay::service {
namespace {

void Report(const std::vector<std::wstring>& lines, ReplayTextSink sink, void* context) {
    for (const std::wstring& line : lines) {
        sink(context, line.c_str());
    }
}

}  // namespace

extern "C" BOOL WINAPI ReplayLoad(const wchar_t* directory) {
    auto recording = recording::Recording::FromDirectory(directory);
    const BOOL available = recording->IsAvailable();
    Service::Get().UseRecording(std::move(recording));
    return available;
}

extern "C" void WINAPI ReplayLoadEmbedded(void) {
    Service::Get().UseRecording(recording::Recording::FromResources());
}

extern "C" void WINAPI ReplayReset(void) {
    Service::Get().Reset();
}

extern "C" BOOL WINAPI ReplayScript(const wchar_t* text) {
    return Service::Get().UseScript(text);
}

extern "C" BOOL WINAPI ReplayDo(const wchar_t* text) {
    const auto line = script::ReadScriptLine(text);
    if (!line || (line->verb != L"arrive" && line->verb != L"clear")) {
        return FALSE;
    }
    const auto change = script::ReadDueChange(*line);
    return change && Service::Get().live.Arrive(*change);
}

extern "C" std::size_t WINAPI ReplayOpenHandles(const wchar_t* kind) {
    const calls::HandleTable& handles = Service::Get().handles;
    if (kind == nullptr) {
        return handles.CountOpen();
    }
    for (std::size_t i = 0; i < calls::kHandleKindCount; ++i) {
        if (calls::kHandleKindNames[i] == kind) {
            return handles.CountOpen(static_cast<calls::HandleKind>(i));
        }
    }
    return 0;
}

extern "C" void WINAPI ReplayDescribeOpen(ReplayTextSink sink, void* context) {
    Report(Service::Get().handles.DescribeOpen(), sink, context);
}

extern "C" void WINAPI ReplayLedgerFaults(ReplayTextSink sink, void* context) {
    Report(Service::Get().handles.Faults(), sink, context);
}

extern "C" void WINAPI ReplayCollectCalls(BOOL on) {
    Service::Get().calls.Collect(on != FALSE);
}

extern "C" void WINAPI ReplayTakeCalls(ReplayCallSink sink, void* context) {
    for (const calls::CallRecord& call : Service::Get().calls.TakeCollected()) {
        const ReplayCallData data{call.sequence,      call.milliseconds,     call.threadId,
                                  call.error,         call.function.c_str(), call.arguments.c_str(),
                                  call.result.c_str()};
        sink(context, &data);
    }
}

extern "C" std::uint64_t WINAPI ReplayCallsOf(const wchar_t* function) {
    const auto found = calls::FindApiFunction(function);
    return found ? Service::Get().CallsOf(*found) : 0;
}

}  // namespace replay::service
