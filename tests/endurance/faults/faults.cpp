#include "endurance/faults/faults.h"

#include <winevt.h>

namespace tavrin::test {
namespace {

constexpr DWORD kCodes[] = {ERROR_ACCESS_DENIED,
                            ERROR_INVALID_HANDLE,
                            ERROR_INSUFFICIENT_BUFFER,
                            ERROR_NO_MORE_ITEMS,
                            ERROR_NOT_FOUND,
                            RPC_S_SERVER_UNAVAILABLE,
                            RPC_S_INVALID_BOUND,
                            ERROR_EVT_CHANNEL_NOT_FOUND,
                            ERROR_EVT_QUERY_RESULT_STALE,
                            ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL,
                            ERROR_EVT_MESSAGE_NOT_FOUND};

constexpr unsigned kFewCalls = 20;
constexpr unsigned kPage = 128;

// Whether the sweep fails call `n` of `count`.
bool IsTaken(unsigned n, unsigned count) {
    return count <= kFewCalls || n == 1 || n == kPage || n == kPage + 1 || n == count;
}

// The enumeration does not end while every EvtNextChannelPath fails.
bool MayLast(const std::wstring& function) {
    return function != L"EvtNextChannelPath";
}

}  // namespace

std::wstring ScriptLine(const Fault& fault) {
    return L"fail " + fault.function + L" code=" + std::to_wstring(fault.code) +
           (fault.isForEver ? L" from=" : L" call=") + std::to_wstring(fault.call);
}

std::vector<Fault> FaultsBetween(const CallCounts& before, const CallCounts& after) {
    std::vector<Fault> faults;
    for (const auto& [function, last] : after) {
        const auto earlier = before.find(function);
        const unsigned done = earlier == before.end() ? 0 : earlier->second;
        for (unsigned call = done + 1; call <= last && function != L"EvtClose"; ++call) {
            if (!IsTaken(call - done, last - done)) {
                continue;
            }
            for (const DWORD code : kCodes) {
                faults.push_back({function, call, false, code});
                if (MayLast(function)) {
                    faults.push_back({function, call, true, code});
                }
            }
        }
    }
    return faults;
}

}  // namespace tavrin::test
