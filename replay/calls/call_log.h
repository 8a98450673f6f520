#pragma once

#include "replay/calls/api_function.h"
#include "replay/calls/argument.h"
#include "replay/calls/handle_table.h"
#include "replay/platform/kernel_handle.h"
#include "replay/platform/lock.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

namespace replay::calls {

// One finished call.
struct CallRecord {
    std::uint64_t sequence = 0;
    std::uint64_t milliseconds = 0;  // since the service was first called
    DWORD threadId = 0;
    std::wstring function;
    std::wstring arguments;
    std::wstring result;  // TRUE, FALSE, NULL, a handle, and what was handed back
    DWORD error = 0;
};

// Writes calls to a file, or collects them in memory, or neither. Safe on any thread.
class CallLog {
public:
    bool IsOn(ApiFunction function) const {
        return on_.load(std::memory_order_relaxed) &&
               (wanted_.load(std::memory_order_relaxed) & Bit(function)) != 0;
    }

    // From now on logs these functions only; an empty list means all.
    void Only(const std::vector<ApiFunction>& functions);

    // From now on writes a line for each call to the file. False if it cannot be created.
    bool WriteTo(const std::wstring& path);

    // Begins or ends collecting in memory.
    void Collect(bool on);
    // The calls collected since the start or the last taking.
    std::vector<CallRecord> TakeCollected();

    // Logs a call; IsOn tells whether it is worth describing.
    void Add(CallRecord record);

private:
    static std::uint64_t Bit(ApiFunction function) {
        return std::uint64_t{1} << static_cast<unsigned>(function);
    }

    std::atomic<bool> on_{false};
    std::atomic<std::uint64_t> wanted_{UINT64_MAX};
    platform::Lock lock_;
    platform::UniqueKernelHandle file_;  // guarded by lock_, like the rest
    bool collecting_ = false;
    std::vector<CallRecord> collected_;
};

// The line of a call: "12 340ms thread 8: EvtQuery(...) = #3, error 0".
std::wstring DescribeCall(const CallRecord& record);

}  // namespace replay::calls
