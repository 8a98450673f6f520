#include <windows.h>

#include <chrono>
#include <thread>

namespace {

using std::chrono::days;
using std::chrono::nanoseconds;
using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

constexpr std::chrono::sys_days kEpoch = std::chrono::year{1601} / 1 / 1;
constexpr int kLastYear = 30827;

// Windows rejects a FILETIME whose top bit is set.
bool IsDate(const FILETIME& time) {
    return (time.dwHighDateTime & 0x80000000U) == 0;
}

Ticks FromFileTime(const FILETIME& time) {
    return Ticks(
        static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime));
}

FILETIME ToFileTime(Ticks ticks) {
    const auto count = static_cast<std::uint64_t>(ticks.count());
    return {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

// Splits Ticks by hand: dates since 1601 overflow the system clock's nanoseconds.
template <typename Unit>
WORD TakeWhole(Ticks& rest) {
    const auto whole = std::chrono::duration_cast<Unit>(rest);
    rest -= whole;
    return static_cast<WORD>(whole.count());
}

std::int64_t MonotonicNanoseconds() {
    return nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

BOOL FailWith(DWORD error) {
    SetLastError(error);
    return FALSE;
}

}  // namespace

void Sleep(DWORD milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

ULONGLONG GetTickCount64() {
    return static_cast<ULONGLONG>(MonotonicNanoseconds() / 1'000'000);
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* ticks) {
    ticks->QuadPart = MonotonicNanoseconds();
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* ticksPerSecond) {
    ticksPerSecond->QuadPart = 1'000'000'000;
    return TRUE;
}

void YieldProcessor() {
    std::this_thread::yield();
}

void GetSystemTimeAsFileTime(FILETIME* time) {
    const auto since1970 =
        std::chrono::duration_cast<Ticks>(std::chrono::system_clock::now().time_since_epoch());
    *time = ToFileTime(since1970 - Ticks(kEpoch.time_since_epoch()));
}

BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* fields) {
    if (!IsDate(*time))
        return FailWith(ERROR_INVALID_PARAMETER);
    Ticks rest = FromFileTime(*time);
    const auto whole = std::chrono::duration_cast<days>(rest);
    rest -= whole;
    const std::chrono::sys_days day = kEpoch + whole;
    const std::chrono::year_month_day date(day);
    fields->wYear = static_cast<WORD>(static_cast<int>(date.year()));
    fields->wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    fields->wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    fields->wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding());
    fields->wHour = TakeWhole<std::chrono::hours>(rest);
    fields->wMinute = TakeWhole<std::chrono::minutes>(rest);
    fields->wSecond = TakeWhole<std::chrono::seconds>(rest);
    fields->wMilliseconds = TakeWhole<std::chrono::milliseconds>(rest);
    return TRUE;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* fields, FILETIME* time) {
    const std::chrono::year_month_day date(std::chrono::year{fields->wYear},
                                           std::chrono::month{fields->wMonth},
                                           std::chrono::day{fields->wDay});
    const bool valid = date.ok() && fields->wYear >= 1601 && fields->wYear <= kLastYear &&
                       fields->wHour < 24 && fields->wMinute < 60 && fields->wSecond < 60 &&
                       fields->wMilliseconds < 1000;
    if (!valid)
        return FailWith(ERROR_INVALID_PARAMETER);
    *time =
        ToFileTime(Ticks(std::chrono::sys_days(date) - kEpoch) + std::chrono::hours(fields->wHour) +
                   std::chrono::minutes(fields->wMinute) + std::chrono::seconds(fields->wSecond) +
                   std::chrono::milliseconds(fields->wMilliseconds));
    return TRUE;
}

BOOL FileTimeToLocalFileTime(const FILETIME* utc, FILETIME* local) {
    *local = *utc;
    return IsDate(*utc) ? TRUE : FailWith(ERROR_INVALID_PARAMETER);
}

BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* utc) {
    return FileTimeToLocalFileTime(local, utc);
}

BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION*, const SYSTEMTIME* local,
                                     SYSTEMTIME* utc) {
    FILETIME time{};
    return SystemTimeToFileTime(local, &time) && FileTimeToSystemTime(&time, utc);
}
