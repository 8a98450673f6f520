#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

constexpr std::uint64_t kTicksPerMillisecond = 10'000;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;

// Converts a UTC time such as 2024-03-01T08:00:00.1234567Z, with 0 to 9 fraction digits, to
// FILETIME.
std::optional<std::uint64_t> ParseEventTime(std::string_view text);

// Formats a FILETIME with seven fraction digits, as current Windows versions do.
std::string FormatEventTime(std::uint64_t fileTime);

// Returns the current time as FILETIME.
std::uint64_t Now();

}  // namespace replay::text
