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
    bool failsAfterWork = false;        // it does its work before
    std::uint64_t padding = 0;          // extra bytes that rendered values need
    std::uint64_t recordIdOffset = 0;   // added to the record id that is rendered
    std::optional<std::uint64_t> time;  // instead of the creation time
    std::optional<DWORD> variantType;   // instead of the right type
};

// The rules in force. Safe on any thread.
class Faults {
public:
    bool IsOn() const { return on_.load(std::memory_order_relaxed); }
    // Puts rules in the place of the former ones; their counts begin at 0.
    void Replace(std::vector<FaultRule> rules);

    // Counts a call, lets its operation wait as the rules say, and returns what else happens to
    // it. `isAbout` tells whether the call is about the channel of this folded name.
    CallEffects Enter(calls::ApiFunction function, calls::Operation& operation,
                      const std::function<bool(const std::wstring&)>& isAbout);

private:
    // Counts a call; returns the rules that act on it.
    std::vector<FaultRule> Count(calls::ApiFunction function,
                                 const std::function<bool(const std::wstring&)>& isAbout);

    std::atomic<bool> on_{false};
    platform::Lock lock_;
    std::vector<FaultRule> rules_;  // guarded by lock_
};

}  // namespace replay::script
