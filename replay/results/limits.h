#pragma once

#include <cstddef>
#include <cstdint>

namespace replay::results {

// The protocol's limits for one EvtNext: 1024 events and 2 MiB of XML in UTF-16.
constexpr std::size_t kMostEventsPerCall = 1024;
constexpr std::uint64_t kMostUnitsPerCall = std::uint64_t{2} * 1024 * 1024 / sizeof(char16_t);

}  // namespace replay::results
