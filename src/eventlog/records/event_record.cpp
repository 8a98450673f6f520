#include "eventlog/records/event_record.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/decimal_text.h"

namespace tavrin::eventlog {
namespace {

constexpr const wchar_t* kLevelNames[] = {
    L"Information",  // 0 and 4 read alike: classic events are logged with level 0
    L"Critical",    L"Error",         L"Warning",       L"Information",
    L"Verbose",     L"Audit Success", L"Audit Failure",
};
constexpr const wchar_t* kUnknownLevelName = L"Unknown";

// Bit 63 is set in every event of the Security log and must be there too.
constexpr std::uint64_t kAuditSuccess = 0x8020000000000000;
constexpr std::uint64_t kAuditFailure = 0x8010000000000000;
constexpr std::uint8_t kAuditSuccessLevel = 6;
constexpr std::uint8_t kAuditFailureLevel = 7;

}  // namespace

EventRecord::EventRecord(std::uint64_t eventRecordId, std::uint32_t identifier,
                         std::uint32_t process, std::uint8_t levelCode,
                         const CalendarTime& localTime, const wchar_t* provider,
                         std::wstring sourceName, std::uint64_t keywordMask)
    : recordId(eventRecordId),
      eventId(identifier),
      processId(base::DecimalText(process)),
      level(levelCode),
      providerName{},
      keywords(keywordMask),
      timeText(FormatTimeText(localTime)),
      source(std::move(sourceName)) {
    for (std::size_t i = 0; i + 1 < kProviderNameCapacity && provider[i] != L'\0'; ++i) {
        providerName[i] = provider[i];
    }
}

const wchar_t* LevelName(const EventRecord& record) {
    return record.level < std::size(kLevelNames) ? kLevelNames[record.level] : kUnknownLevelName;
}

std::uint8_t EffectiveLevel(std::uint8_t level, std::uint64_t keywords) {
    if (level != 0) {
        return level;
    }
    if ((keywords & kAuditSuccess) == kAuditSuccess) {
        return kAuditSuccessLevel;
    }
    if ((keywords & kAuditFailure) == kAuditFailure) {
        return kAuditFailureLevel;
    }
    return 0;
}

std::wstring FormatTimeText(const CalendarTime& time) {
    constexpr std::size_t kMostDigits = 20;
    wchar_t text[6 * (kMostDigits + 1)];
    wchar_t* end = text;
    const auto append = [&end](unsigned number, wchar_t separator) {
        end = base::WriteDecimal(end, number, 2);
        *end++ = separator;
    };
    append(time.day, L'/');
    append(time.month, L'/');
    append(time.year, L' ');
    append(time.hour, L':');
    append(time.minute, L':');
    end = base::WriteDecimal(end, time.second, 2);
    return {text, end};
}

std::wstring ShortSourceName(std::wstring_view providerName) {
    const bool hasSlash = providerName.find(L'/') != std::wstring_view::npos;
    const std::size_t dash = providerName.rfind(L'-');
    if (hasSlash || dash == std::wstring_view::npos) {
        return std::wstring(providerName);
    }
    return std::wstring(providerName.substr(dash + 1));
}

}  // namespace tavrin::eventlog
