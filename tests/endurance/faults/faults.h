#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "endurance/faults/story_driver.h"

namespace tavrin::test {

// A service call that fails, by its number among the calls of its function.
struct Fault {
    std::wstring function;
    unsigned call;
    bool isForEver;  // all later calls fail as well
    DWORD code;
};

// The line of the service's script that causes the fault.
std::wstring ScriptLine(const Fault& fault);

// Returns faults for the calls between the two counts: once and for ever, with every code that the
// service is known to return. Of a function with many calls, only the first, the last and those at
// the end of the first page fail.
std::vector<Fault> FaultsBetween(const CallCounts& before, const CallCounts& after);

}  // namespace tavrin::test
