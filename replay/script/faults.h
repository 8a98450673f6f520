#pragma once

#include "replay/calls/api_function.h"
#include "replay/calls/operation.h"
#include "replay/platform/lock.h"
#include "replay/script/fault_rule.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace replay::script {

// The effects of a script on one call.
struct CallEffects {
    std::optional<DWORD> failure;       // the call fails with this code, which may be 0
    bool failsAfterWork = false;        // after the call has done its work
    std::uint64_t padding = 0;          // extra bytes that rendered values need
    std::uint64_t recordIdOffset = 0;   // added to the rendered record id
    std::optional<std::uint64_t> time;  // instead of the creation time
    std::optional<DWORD> variantType;   // instead of the correct type
};

// The active rules. Thread-safe.
class Faults {
public:
    bool IsOn() const { return on_.load(std::memory_order_relaxed); }
    // Replaces the rules and resets their counts.
    void Replace(std::vector<FaultRule> rules);

    // Counts a call, delays its operation as the rules require, and returns the other effects.
    // `isAbout` returns whether the call concerns the channel with this folded name.
    CallEffects Enter(calls::ApiFunction function, calls::Operation& operation,
                      const std::function<bool(const std::wstring&)>& isAbout);

private:
    // Counts a call and returns the rules that apply to it.
    std::vector<FaultRule> Count(calls::ApiFunction function,
                                 const std::function<bool(const std::wstring&)>& isAbout);

    std::atomic<bool> on_{false};
    platform::Lock lock_;
    std::vector<FaultRule> rules_;  // guarded by lock_
};

}  // namespace replay::script
