#pragma once

#include "replay/calls/api_function.h"
#include "replay/script/script_line.h"

#include <cstdint>
#include <optional>
#include <string>

#include <windows.h>

namespace replay::script {

// One line of a script about calls of a function.
struct FaultRule {
    enum class Deed { kFail, kDelay, kBlock, kPad, kRecordId, kTime, kType };

    Deed deed{};
    calls::ApiFunction function{};
    std::uint64_t firstCall = 1;  // counted over the calls that the rule is about
    std::uint64_t lastCall = UINT64_MAX;
    std::wstring foldedChannel;  // empty: any
    DWORD code = 0;
    DWORD milliseconds = 0;
    std::uint64_t bytes = 0;
    std::int64_t add = 0;
    std::uint64_t fileTime = 0;
    std::wstring untilEvent;
    std::wstring enteredEvent;  // set when a call begins to block
    std::uint64_t seen = 0;     // calls so far
};

// The rule of a line; nothing if the line is wrong.
std::optional<FaultRule> ReadFaultRule(const ScriptLine& line);

}  // namespace replay::script
