#pragma once

#include <string>
#include <vector>

#include "endurance/faults/faulty_service.h"
#include "support/recording.h"

namespace tavrin::test {

struct TreeLine {
    int depth;
    std::wstring text;
    int image;

    bool operator==(const TreeLine&) const = default;
};

void PrintTo(const TreeLine& line, std::ostream* stream);

// Returns the tree's lines from the top when the service lists these channels and a call fails.
std::vector<TreeLine> ExpectedTree(const std::vector<RecordedChannel>& channels,
                                   FaultyService& service);

}  // namespace tavrin::test
