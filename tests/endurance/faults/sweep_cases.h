#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "endurance/faults/faulty_service.h"
#include "endurance/faults/stories.h"

namespace tavrin::test {

// A story in which a service call fails.
struct SweepCase {
    const Story* story;
    Fault fault;
};

void PrintTo(const SweepCase& sweepCase, std::ostream* stream);

// Returns each call of each story with each code, once and for ever. Of a function with a hundred
// calls or more, only the first ones, those around the end of the first page, and the last; in the
// stories of the large channel, only the first and the last.
std::vector<SweepCase> EveryCase();

// Returns a test's name such as SelectChannel_EvtNext_2_Once_15011.
std::string NameOf(const SweepCase& sweepCase);

}  // namespace tavrin::test
