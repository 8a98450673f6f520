#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "eventlog/channels/event_node.h"

namespace tavrin::bench {

// Reads a synthetic channel from this process's replay service in the ways that are compared.
class LoadRuns {
public:
    // `pace` is a line of the service's script, or empty.
    LoadRuns(std::uint64_t events, const std::wstring& pace);

    // Makes the loader's calls and trace lines but keeps no records.
    double BareLoopSeconds() const;

    // Runs the program's loader without its limit. Leaves the records in the node.
    double LoadSeconds(eventlog::EventNode& node) const;

private:
    std::uint64_t events_;
};

std::shared_ptr<eventlog::EventNode> MakeBenchNode();

}  // namespace tavrin::bench
