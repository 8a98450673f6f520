#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

constexpr std::uint64_t kTicksPerMillisecond = 10'000;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;

// A UTC time such as 2024-03-01T08:00:00.1234567Z (no fraction to nine digits) as FILETIME.
std::optional<std::uint64_t> ParseEventTime(std::string_view text);

// The time with seven fraction digits, as recent systems write it.
std::string FormatEventTime(std::uint64_t fileTime);

// The present time as FILETIME.
std::uint64_t Now();

}  // namespace replay::text
