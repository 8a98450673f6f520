#pragma once

// Controls the replay service from within the process that uses it. The library exports the
// functions at the top; test programs use those of namespace replay below.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

extern "C" {

using ReplayTextSink = void (*)(void* context, const wchar_t* text);

struct ReplayCallData {
    std::uint64_t sequence;
    std::uint64_t milliseconds;
    DWORD threadId;
    DWORD error;
    const wchar_t* function;
    const wchar_t* arguments;
    const wchar_t* result;
};
using ReplayCallSink = void (*)(void* context, const ReplayCallData* call);

BOOL WINAPI ReplayLoad(const wchar_t* directory);
void WINAPI ReplayLoadEmbedded(void);
void WINAPI ReplayReset(void);
BOOL WINAPI ReplayScript(const wchar_t* text);
std::size_t WINAPI ReplayOpenHandles(const wchar_t* kind);
void WINAPI ReplayDescribeOpen(ReplayTextSink sink, void* context);
void WINAPI ReplayLedgerFaults(ReplayTextSink sink, void* context);
void WINAPI ReplayCollectCalls(BOOL on);
void WINAPI ReplayTakeCalls(ReplayCallSink sink, void* context);
std::uint64_t WINAPI ReplayCallsOf(const wchar_t* function);
BOOL WINAPI ReplayDo(const wchar_t* line);

}  // extern "C"

namespace replay {

// One call of the service in the call log.
struct LoggedCall {
    std::uint64_t sequence = 0;
    std::uint64_t milliseconds = 0;  // since the service was first called
    DWORD threadId = 0;
    DWORD error = 0;
    std::wstring function;   // EvtQuery
    std::wstring arguments;  // Session=NULL, Path="System", Query="*", Flags=0x201
    std::wstring result;     // TRUE, FALSE, NULL or #12, then returned values: TRUE Returned=128

    // EvtQuery(Session=NULL, ...)
    std::wstring Text() const { return function + L"(" + arguments + L")"; }
};

namespace control {
inline void AddText(void* lines, const wchar_t* text) {
    static_cast<std::vector<std::wstring>*>(lines)->emplace_back(text);
}
inline void AddCall(void* calls, const ReplayCallData* call) {
    static_cast<std::vector<LoggedCall>*>(calls)->push_back(
        {call->sequence, call->milliseconds, call->threadId, call->error, call->function,
         call->arguments, call->result});
}
}  // namespace control

// Serves the recording in this directory. Returns false if it has no readable channel list.
inline bool LoadDirectory(const std::wstring& directory) {
    return ReplayLoad(directory.c_str()) != FALSE;
}

// Serves the embedded recording.
inline void LoadEmbedded() {
    ReplayLoadEmbedded();
}

// Restores the initial state: recording of the environment, no script, no counts, no handles.
inline void Reset() {
    ReplayReset();
}

// Replaces the script (see README.md). Returns false if a line is wrong.
inline bool Script(const std::wstring& text) {
    return ReplayScript(text.c_str()) != FALSE;
}

// Executes one "arrive" or "clear" line now and keeps the script. Returns false if it fails.
inline bool Do(const std::wstring& line) {
    return ReplayDo(line.c_str()) != FALSE;
}

// Number of open handles, of any kind or of one: ChannelEnum, ChannelConfig, Query, Subscription,
// Event, RenderContext, Log, Bookmark, Publisher.
inline std::size_t OpenHandles() {
    return ReplayOpenHandles(nullptr);
}
inline std::size_t OpenHandles(const std::wstring& kind) {
    return ReplayOpenHandles(kind.c_str());
}

// One line per open handle with the call that opened it.
inline std::vector<std::wstring> DescribeOpenHandles() {
    std::vector<std::wstring> lines;
    ReplayDescribeOpen(control::AddText, &lines);
    return lines;
}

// One line per misuse: a handle closed twice, used after closing, of the wrong kind or invalid.
inline std::vector<std::wstring> LedgerFaults() {
    std::vector<std::wstring> lines;
    ReplayLedgerFaults(control::AddText, &lines);
    return lines;
}

// Starts collecting calls and discards those collected before.
inline void StartCallLog() {
    ReplayCollectCalls(TRUE);
}
inline void StopCallLog() {
    ReplayCollectCalls(FALSE);
}
// Returns the calls since StartCallLog or the last TakeCallLog.
inline std::vector<LoggedCall> TakeCallLog() {
    std::vector<LoggedCall> calls;
    ReplayTakeCalls(control::AddCall, &calls);
    return calls;
}

// Number of calls of this function, whether collected or not.
inline std::uint64_t CallsOf(const std::wstring& function) {
    return ReplayCallsOf(function.c_str());
}

}  // namespace replay
