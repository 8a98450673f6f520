#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "endurance/faults/story_driver.h"

namespace tavrin::test {

// A call of the service that is refused, by its number among the calls of its function.
struct Fault {
    std::wstring function;
    unsigned call;
    bool isForEver;  // refuses all later calls as well
    DWORD code;
};

// The line of the service's script that causes the fault.
std::wstring ScriptLine(const Fault& fault);

// Refuses each call that is in `after` and not in `before`, once and for ever, with every code
// that the service is known to give. Of a function that is called for each event, only the
// calls at the ends of the first page and the last call are refused.
std::vector<Fault> FaultsBetween(const CallCounts& before, const CallCounts& after);

}  // namespace tavrin::test
