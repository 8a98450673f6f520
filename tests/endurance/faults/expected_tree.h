#pragma once

#include <string>
#include <vector>

#include "endurance/faults/faulty_service.h"
#include "support/recording.h"

namespace tavrin::test {

// One item of the tree.
struct TreeLine {
    int depth;
    std::wstring text;
    int image;

    bool operator==(const TreeLine&) const = default;
};

void PrintTo(const TreeLine& line, std::ostream* stream);

// What the tree shows, from the top, when the service lists these channels and refuses a call.
std::vector<TreeLine> ExpectedTree(const std::vector<RecordedChannel>& channels,
                                   FaultyService& service);

}  // namespace tavrin::test
