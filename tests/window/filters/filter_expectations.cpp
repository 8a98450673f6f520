#include "window/filters/filter_expectations.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <map>

namespace tavrin::test {
namespace {

using namespace std::chrono;

constexpr std::size_t kNamesPerSelect = 16;

const std::map<wchar_t, std::wstring> kEntities = {
    {L'&', L"&amp;"}, {L'<', L"&lt;"}, {L'>', L"&gt;"}, {L'\'', L"&apos;"}, {L'"', L"&quot;"}};

std::wstring Escaped(const std::wstring& text) {
    std::wstring escaped;
    for (const wchar_t unit : text) {
        const auto entity = kEntities.find(unit);
        escaped += entity == kEntities.end() ? std::wstring(1, unit) : entity->second;
    }
    return escaped;
}

std::wstring Joined(const std::vector<std::wstring>& parts, const std::wstring& separator) {
    std::wstring joined;
    for (const std::wstring& part : parts) {
        joined += (joined.empty() ? L"" : separator) + part;
    }
    return joined;
}

struct Calendar {
    int year;
    unsigned month, day;
    long long hour, minute, second;
};

template <typename Time>
Calendar CalendarOf(Time time) {
    const auto date = floor<days>(time);
    const year_month_day day(date);
    const hh_mm_ss clock(time - date);
    return {static_cast<int>(day.year()),     static_cast<unsigned>(day.month()),
            static_cast<unsigned>(day.day()), clock.hours().count(),
            clock.minutes().count(),          clock.seconds().count()};
}

std::wstring QueryTime(UtcTime time) {
    const Calendar parts = CalendarOf(time);
    wchar_t text[40];
    std::swprintf(text, std::size(text), L"'%04d-%02u-%02uT%02lld:%02lld:%02lld.000Z'", parts.year,
                  parts.month, parts.day, parts.hour, parts.minute, parts.second);
    return text;
}

std::wstring TimeTerm(const ServerFilter& filter) {
    std::vector<std::wstring> bounds;
    if (filter.from) {
        bounds.push_back(L"@SystemTime>=" + QueryTime(*filter.from));
    }
    if (filter.until) {
        bounds.push_back(L"@SystemTime<" + QueryTime(*filter.until));
    }
    return bounds.empty() ? L"" : L"TimeCreated[" + Joined(bounds, L" and ") + L"]";
}

// Skips names with both kinds of quotes: XPath cannot quote them.
std::vector<std::wstring> NameTerms(const std::set<std::wstring>& names) {
    std::vector<std::wstring> terms;
    for (const std::wstring& name : names) {
        const bool quotation = name.find(L'"') != std::wstring::npos;
        if (quotation && name.find(L'\'') != std::wstring::npos) {
            continue;
        }
        terms.push_back(quotation ? L"@Name='" + name + L"'" : L"@Name=\"" + name + L"\"");
    }
    return terms;
}

// The conditions of the Select elements.
std::vector<std::wstring> Conditions(const ServerFilter& filter) {
    const std::wstring time = TimeTerm(filter);
    const std::vector<std::wstring> names = NameTerms(filter.sources);
    if (names.empty()) {
        return time.empty() ? std::vector<std::wstring>{} : std::vector<std::wstring>{time};
    }
    std::vector<std::wstring> conditions;
    for (std::size_t first = 0; first < names.size(); first += kNamesPerSelect) {
        const std::size_t last = std::min(first + kNamesPerSelect, names.size());
        const std::vector<std::wstring> group(names.begin() + static_cast<std::ptrdiff_t>(first),
                                              names.begin() + static_cast<std::ptrdiff_t>(last));
        const std::wstring providers = L"Provider[" + Joined(group, L" or ") + L"]";
        conditions.push_back(time.empty() ? providers : L"(" + providers + L") and " + time);
    }
    return conditions;
}

std::wstring Folded(std::wstring text) {
    std::ranges::transform(text, text.begin(), [](wchar_t unit) {
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit | 0x20) : unit;
    });
    return text;
}

std::wstring LevelNameOf(const RecordedEvent& event) {
    const std::map<unsigned, std::wstring> names = {{0, L"Information"}, {1, L"Critical"},
                                                    {2, L"Error"},       {3, L"Warning"},
                                                    {4, L"Information"}, {5, L"Verbose"}};
    return names.at(event.level);
}

std::wstring ListTime(UtcTime time, minutes offset) {
    const Calendar parts = CalendarOf(time + offset);
    wchar_t text[40];
    std::swprintf(text, std::size(text), L"%02u/%02u/%02d %02lld:%02lld:%02lld", parts.day,
                  parts.month, parts.year, parts.hour, parts.minute, parts.second);
    return text;
}

std::wstring ShortName(const std::wstring& provider) {
    return provider.find(L'/') == std::wstring::npos
               ? provider.substr(provider.find_last_of(L'-') + 1)
               : provider;
}

std::wstring ProcessText(const RecordedEvent& event) {
    return std::to_wstring(event.processId.value_or(0));
}

}  // namespace

ZoneOffsets OffsetsOfThisZone(UtcTime around) {
    TIME_ZONE_INFORMATION zone{};
    const bool isSummer = GetTimeZoneInformation(&zone) == TIME_ZONE_ID_DAYLIGHT;
    const SYSTEMTIME utc = FieldsOf(LocalTime(around.time_since_epoch()));
    SYSTEMTIME local{};
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    return {
        minutes(-zone.Bias - (isSummer ? zone.DaylightBias : zone.StandardBias)),
        duration_cast<minutes>(LocalTimeOf(local).time_since_epoch() - around.time_since_epoch())};
}

std::wstring ExpectedQuery(const std::wstring& channel, const ServerFilter& filter) {
    const std::vector<std::wstring> conditions = Conditions(filter);
    if (conditions.empty()) {
        return L"*";
    }
    const std::wstring path = L" Path='" + Escaped(channel) + L"'>";
    std::wstring selects;
    for (const std::wstring& condition : conditions) {
        selects += L"<Select" + path + Escaped(L"*[System[" + condition + L"]]") + L"</Select>";
    }
    return L"<QueryList><Query Id='0'" + path + selects + L"</Query></QueryList>";
}

UtcTime TimeOf(const RecordedEvent& event) {
    // Times look like 2024-03-05T07:09:03.0000000Z.
    const auto number = [&](std::size_t at, std::size_t digits) {
        return std::stoi(event.time.substr(at, digits));
    };
    const auto date = year(number(0, 4)) / number(5, 2) / number(8, 2);
    return sys_days(date) + hours(number(11, 2)) + minutes(number(14, 2)) + seconds(number(17, 2));
}

SYSTEMTIME FieldsOf(LocalTime time) {
    const Calendar parts = CalendarOf(time);
    SYSTEMTIME fields{};
    fields.wYear = static_cast<WORD>(parts.year);
    fields.wMonth = static_cast<WORD>(parts.month);
    fields.wDay = static_cast<WORD>(parts.day);
    fields.wHour = static_cast<WORD>(parts.hour);
    fields.wMinute = static_cast<WORD>(parts.minute);
    fields.wSecond = static_cast<WORD>(parts.second);
    return fields;
}

LocalTime LocalTimeOf(const SYSTEMTIME& fields) {
    return local_days(year(fields.wYear) / fields.wMonth / fields.wDay) + hours(fields.wHour) +
           minutes(fields.wMinute) + seconds(fields.wSecond);
}

bool IsFound(const RecordedEvent& event, const ServerFilter& filter) {
    // The program ignores names that cannot be quoted.
    const auto canBeAskedFor = [](const std::wstring& name) {
        return name.find(L'"') == std::wstring::npos || name.find(L'\'') == std::wstring::npos;
    };
    const UtcTime time = TimeOf(event);
    return (!filter.from || time >= *filter.from) && (!filter.until || time < *filter.until) &&
           (std::ranges::none_of(filter.sources, canBeAskedFor) ||
            (filter.sources.contains(event.provider) && canBeAskedFor(event.provider)));
}

bool IsShown(const RecordedEvent& event, const std::wstring& text, minutes offset) {
    return Holds(event.provider, text) || Holds(LevelNameOf(event), text) ||
           Holds(ListTime(TimeOf(event), offset), text) || Holds(ProcessText(event), text);
}

bool Holds(const std::wstring& text, const std::wstring& part) {
    return Folded(text).find(Folded(part)) != std::wstring::npos;
}

RowCells ExpectedCells(const RecordedEvent& event, minutes offset) {
    return {LevelNameOf(event),        ListTime(TimeOf(event), offset),
            ShortName(event.provider), std::to_wstring(event.eventId),
            ProcessText(event),        std::to_wstring(event.recordId)};
}

std::wstring ExpectedSummary(const std::wstring& name, std::size_t sources, bool hasRange) {
    std::vector<std::wstring> parts;
    if (sources != 0) {
        parts.push_back(std::to_wstring(sources) + L" source" + (sources > 1 ? L"s" : L""));
    }
    if (hasRange) {
        parts.push_back(L"time range");
    }
    return parts.empty() ? name : name + L" (" + Joined(parts, L", ") + L")";
}

std::wstring ExpectedSourcesCaption(std::size_t sources) {
    return L"Sources (" + (sources == 0 ? L"all" : std::to_wstring(sources) + L" selected") + L")";
}

}  // namespace tavrin::test
