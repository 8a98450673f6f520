#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "api_function.h"
#include "lock.h"
#include "script_line.h"

namespace replay {

// What the script does to one call.
struct CallEffects {
    DWORD failure = 0;                  // the call fails with this code; 0: it does not
    std::uint64_t padding = 0;          // bytes that rendered values need in excess
    std::int64_t recordIdOffset = 0;    // added to the record id that is rendered
    std::optional<std::uint64_t> time;  // instead of the creation time
    std::optional<DWORD> variantType;   // instead of the right type
};

// One line of a script about calls of a function.
struct FaultRule {
    enum class Deed { kFail, kDelay, kBlock, kPad, kRecordId, kTime, kType };

    Deed deed{};
    ApiFunction function{};
    std::uint64_t firstCall = 1;  // counted over the calls that the rule is about
    std::uint64_t lastCall = UINT64_MAX;
    std::wstring foldedChannel;  // empty: any
    DWORD code = 0;
    DWORD milliseconds = 0;
    std::uint64_t bytes = 0;
    std::int64_t add = 0;
    std::uint64_t fileTime = 0;
    std::wstring untilEvent;
    std::wstring untilFile;
    std::wstring enteredEvent;  // set when a call begins to block
    std::uint64_t seen = 0;     // calls so far
};

// The rule of a line; nothing if the line is wrong.
std::optional<FaultRule> ReadFaultRule(const ScriptLine& line);

// The rules in force. Safe on any thread.
class Faults {
public:
    bool IsOn() const { return on_.load(std::memory_order_relaxed); }
    void Replace(std::vector<FaultRule> rules);

    // Counts a call, waits as the rules say, and returns what else happens to it. `isAbout` tells
    // whether the call is about the channel of this folded name.
    CallEffects Enter(ApiFunction function,
                      const std::function<bool(const std::wstring&)>& isAbout);

private:
    std::atomic<bool> on_{false};
    Lock lock_;
    std::vector<FaultRule> rules_;  // guarded by lock_
};

}  // namespace replay
