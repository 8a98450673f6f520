#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "eventlog/channels/event_node.h"

namespace tavrin::bench {

// One channel of synthetic events in the replay service of this process, and the ways to
// read it whose times are compared.
class LoadRuns {
public:
    // The pace is a line of the service's script, or empty.
    LoadRuns(std::uint64_t events, const std::wstring& pace);

    // The same calls and trace lines as the loader's, keeping nothing.
    double BareLoopSeconds() const;

    // The program's loader with its limit lifted; the node holds the records afterwards.
    double LoadSeconds(eventlog::EventNode& node) const;

private:
    std::uint64_t events_;
};

std::shared_ptr<eventlog::EventNode> MakeBenchNode();

}  // namespace tavrin::bench
