#include "replay/text/event_time.h"

#include "replay/text/numbers.h"

#include <cstdio>
#include <iterator>

#include <windows.h>

namespace replay::text {
namespace {

constexpr std::size_t kFractionDigits = 7;  // a FILETIME counts 100 ns units

// The position of each number in "2024-03-01T08:00:00".
struct Slot {
    std::size_t begin;
    std::size_t length;
    char before;
};
constexpr Slot kSlots[] = {{0, 4, '\0'}, {5, 2, '-'},  {8, 2, '-'},
                           {11, 2, 'T'}, {14, 2, ':'}, {17, 2, ':'}};
constexpr std::size_t kSecondsEnd = 19;

// Parses ".1234567" to 100 ns units. Drops further digits.
std::optional<std::uint64_t> ParseFraction(std::string_view fraction) {
    if (fraction.empty()) {
        return 0;
    }
    if (fraction.front() != '.' || fraction.size() < 2) {
        return std::nullopt;
    }
    std::string digits(fraction.substr(1));
    if (digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    digits.resize(kFractionDigits, '0');
    return ParseNumber<std::uint64_t>(digits);
}

std::optional<std::uint64_t> ToFileTime(const SYSTEMTIME& fields) {
    FILETIME time{};
    if (!SystemTimeToFileTime(&fields, &time)) {
        return std::nullopt;
    }
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

// Parses a date and time without a fraction to 100 ns units.
std::optional<std::uint64_t> ParseSeconds(std::string_view text) {
    WORD numbers[std::size(kSlots)]{};
    for (std::size_t i = 0; i < std::size(kSlots); ++i) {
        const Slot& slot = kSlots[i];
        const auto number = ParseNumber<WORD>(text.substr(slot.begin, slot.length));
        if (!number || (slot.before != '\0' && text[slot.begin - 1] != slot.before)) {
            return std::nullopt;
        }
        numbers[i] = *number;
    }
    return ToFileTime({.wYear = numbers[0],
                       .wMonth = numbers[1],
                       .wDayOfWeek = 0,
                       .wDay = numbers[2],
                       .wHour = numbers[3],
                       .wMinute = numbers[4],
                       .wSecond = numbers[5],
                       .wMilliseconds = 0});
}

}  // namespace

std::optional<std::uint64_t> ParseEventTime(std::string_view text) {
    if (text.ends_with('Z')) {
        text.remove_suffix(1);
    }
    if (text.size() < kSecondsEnd) {
        return std::nullopt;
    }
    const auto seconds = ParseSeconds(text.substr(0, kSecondsEnd));
    const auto fraction = ParseFraction(text.substr(kSecondsEnd));
    if (!seconds || !fraction) {
        return std::nullopt;
    }
    return *seconds + *fraction;
}

std::string FormatEventTime(std::uint64_t fileTime) {
    const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    SYSTEMTIME fields{};
    FileTimeToSystemTime(&time, &fields);
    char text[64];
    std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u.%07uZ", fields.wYear,
                  fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond,
                  static_cast<unsigned>(fileTime % kTicksPerSecond));
    return text;
}

std::uint64_t Now() {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

}  // namespace replay::text
