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
    std::wstring result;  // TRUE, FALSE, NULL or a handle, then the returned values
    DWORD error = 0;
};

// Logs calls to a file or to memory, if enabled. Thread-safe.
class CallLog {
public:
    bool IsOn(ApiFunction function) const {
        return on_.load(std::memory_order_relaxed) &&
               (wanted_.load(std::memory_order_relaxed) & Bit(function)) != 0;
    }

    // Limits the log to these functions. An empty list means all.
    void Only(const std::vector<ApiFunction>& functions);

    // Starts writing a line per call to this file. Returns false if the file cannot be created.
    bool WriteTo(const std::wstring& path);

    // Starts or stops collecting calls in memory.
    void Collect(bool on);
    // Returns the calls collected since Collect or the last TakeCollected.
    std::vector<CallRecord> TakeCollected();

    // Logs a call. Check IsOn first: describing a call is expensive.
    void Add(CallRecord record);

private:
    static std::uint64_t Bit(ApiFunction function) {
        return std::uint64_t{1} << static_cast<unsigned>(function);
    }

    std::atomic<bool> on_{false};
    std::atomic<std::uint64_t> wanted_{UINT64_MAX};
    platform::Lock lock_;
    platform::UniqueKernelHandle file_;  // guarded by lock_, like the fields below
    bool collecting_ = false;
    std::vector<CallRecord> collected_;
};

// Returns a line such as "12 340ms thread 8: EvtQuery(...) = #3, error 0".
std::wstring DescribeCall(const CallRecord& record);

}  // namespace replay::calls
