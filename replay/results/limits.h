#pragma once

#include <cstddef>
#include <cstdint>

namespace replay::results {

// What one EvtNext may return: the protocol's limits. Events are counted by the size of their XML
// in UTF-16, given here as the number of its units.
constexpr std::size_t kMostEventsPerCall = 1024;
constexpr std::uint64_t kMostBytesPerCall = 2 * 1024 * 1024 / 2;

}  // namespace replay::results
