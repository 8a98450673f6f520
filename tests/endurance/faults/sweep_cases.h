#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "endurance/faults/faulty_service.h"
#include "endurance/faults/stories.h"

namespace tavrin::test {

// A story in which the service refuses a call.
struct SweepCase {
    const Story* story;
    Fault fault;
};

void PrintTo(const SweepCase& sweepCase, std::ostream* stream);

// Each call of each story with each code, once and for ever. Of a function that is called for
// each of many events, the calls at the beginning, around the end of the first page, and at the
// end; in the large channel, whose pages are no others, the first and the last.
std::vector<SweepCase> EveryCase();

// As a test's name: SelectChannel_EvtNext_2_Once_15011.
std::string NameOf(const SweepCase& sweepCase);

}  // namespace tavrin::test
