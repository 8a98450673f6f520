#include "query/time_range.h"

#include <cstdint>
#include <cwchar>

namespace tavrin::query {
namespace {

constexpr std::uint64_t kOneSecond = 10'000'000;  // in 100 ns

std::optional<std::uint64_t> ToUtcFileTime(SYSTEMTIME local) {
    local.wMilliseconds = 0;
    SYSTEMTIME utc{};
    FILETIME time{};
    if (!TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc) ||
        !SystemTimeToFileTime(&utc, &time)) {
        return std::nullopt;
    }
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

std::optional<std::uint64_t> ToUtcFileTime(const std::optional<SYSTEMTIME>& local) {
    return local ? ToUtcFileTime(*local) : std::nullopt;
}

}  // namespace

TimeRangeFilter MakeTimeRange(const std::optional<SYSTEMTIME>& localFrom,
                              const std::optional<SYSTEMTIME>& localTo) {
    TimeRangeFilter range;
    if (const auto from = ToUtcFileTime(localFrom)) {
        range.hasFrom = true;
        range.from = *from;
    }
    if (const auto to = ToUtcFileTime(localTo)) {
        range.hasTo = true;
        range.to = *to + kOneSecond;
    }
    return range;
}

bool IsOrdered(const TimeRangeFilter& range) {
    return !range.hasFrom || !range.hasTo || range.from < range.to;
}

bool Differ(const TimeRangeFilter& a, const TimeRangeFilter& b) {
    return a.hasFrom != b.hasFrom || a.hasTo != b.hasTo || (a.hasFrom && a.from != b.from) ||
           (a.hasTo && a.to != b.to);
}

SYSTEMTIME FirstTimeOf(TimeBound bound, const SYSTEMTIME& localNow) {
    SYSTEMTIME time = localNow;
    time.wMilliseconds = 0;
    if (bound == TimeBound::From) {
        time.wHour = time.wMinute = time.wSecond = 0;
    }
    return time;
}

std::optional<SYSTEMTIME> ParseTimeText(const std::wstring& text) {
    int day = 0;
    int month = 0;
    int year = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (std::swscanf(text.c_str(), L"%d/%d/%d %d:%d:%d", &day, &month, &year, &hour, &minute,
                     &second) != 6) {
        return std::nullopt;
    }
    SYSTEMTIME time{};
    time.wDay = static_cast<WORD>(day);
    time.wMonth = static_cast<WORD>(month);
    time.wYear = static_cast<WORD>(year);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    time.wSecond = static_cast<WORD>(second);
    return time;
}

}  // namespace tavrin::query
