#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::query {

// The time range that applies to every channel, in 100 ns since 1601, UTC. Replaced
// as a whole, never field by field.
struct TimeRangeFilter {
    bool hasFrom = false;
    bool hasTo = false;
    std::uint64_t from = 0;  // inclusive
    std::uint64_t to = 0;    // exclusive: one second after the chosen time
};

// Ascending by code unit, case-sensitive.
using SourceSet = std::set<std::wstring>;

// The event sources of one channel.
struct SourceFilter {
    SourceSet knownSources;
    SourceSet selectedSources;  // empty: all sources
    bool registryScanned = false;
};

// By the channel node's address. Entries stay for the whole run.
using SourceFilterTable = std::map<const eventlog::EventNode*, SourceFilter>;

// The program's filters. Window thread only: a loader gets the query text made of them.
extern TimeRangeFilter g_timeRangeFilter;
extern SourceFilterTable g_sourceFilterTable;

}  // namespace tavrin::query
