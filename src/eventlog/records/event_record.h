#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin::eventlog {

// Provider names are stored in place: a record with its name is one allocation.
inline constexpr std::size_t kProviderNameCapacity = 128;

// A point in time as calendar fields.
struct CalendarTime {
    unsigned year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
};

// The facts of one event that the event list shows. Immutable, so any thread may read it.
struct EventRecord {
    // The provider name is zero-terminated and cut to 127 characters.
    EventRecord(std::uint64_t eventRecordId, std::uint32_t identifier, std::uint32_t process,
                std::uint8_t levelCode, const CalendarTime& localTime, const wchar_t* provider,
                std::wstring sourceName, std::uint64_t keywordMask);

    std::uint64_t recordId;
    std::uint32_t eventId;
    std::wstring processId;  // decimal
    std::uint8_t level;
    wchar_t providerName[kProviderNameCapacity];
    std::uint64_t keywords;
    std::wstring timeText;  // local, day/month/year hour:minute:second
    std::wstring source;    // the provider's short name
};

using EventRecordPtr = std::shared_ptr<const EventRecord>;
using EventRecordList = std::vector<EventRecordPtr>;

// The display name of a record's level, as constant text.
const wchar_t* LevelName(const EventRecord& record);

// The level to show. Security audits have level 0 and say in their keywords whether they succeeded
// (6) or failed (7). An absent level is passed as 0.
std::uint8_t EffectiveLevel(std::uint8_t level, std::uint64_t keywords);

// "05/03/2024 07:09:03" for 5 March 2024.
std::wstring FormatTimeText(const CalendarTime& time);

// The part of a provider name behind its last "-"; the whole name if it has a "/".
std::wstring ShortSourceName(std::wstring_view providerName);

}  // namespace tavrin::eventlog
