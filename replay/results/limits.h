#pragma once

#include <cstddef>
#include <cstdint>

namespace replay::results {

// Limits of the service's protocol for one EvtNext: 1024 events and 2 MiB of UTF-16 XML.
constexpr std::size_t kMostEventsPerCall = 1024;
constexpr std::uint64_t kMostUnitsPerCall = std::uint64_t{2} * 1024 * 1024 / sizeof(char16_t);

}  // namespace replay::results
