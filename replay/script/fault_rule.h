#pragma once

#include "replay/calls/api_function.h"
#include "replay/script/script_line.h"

#include <cstdint>
#include <optional>
#include <string>

namespace replay::script {

// A script line that affects the calls of one function.
struct FaultRule {
    enum class Kind { kFail, kDelay, kBlock, kPad, kRecordId, kTime, kType };

    Kind kind{};
    calls::ApiFunction function{};
    std::uint64_t firstCall = 1;  // counts only the calls that the rule applies to
    std::uint64_t lastCall = UINT64_MAX;
    std::wstring foldedChannel;  // empty: any
    std::uint64_t value = 0;     // code, milliseconds, bytes, offset or FILETIME
    std::wstring untilEvent;
    std::wstring enteredEvent;  // set when a call begins to block
    std::uint64_t seen = 0;     // calls so far
};

// Reads a line. Returns nothing if the line is wrong.
std::optional<FaultRule> ReadFaultRule(const ScriptLine& line);

}  // namespace replay::script
