#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "support/wait_until.h"
#include "window/filters/filter_expectations.h"
#include "window/filters/filter_window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono;

constexpr year kYear(2024);

struct KnownZone {
    std::wstring_view name;
    minutes standard;  // east of UTC
    minutes forward;   // how far daylight saving time is ahead
};

constexpr KnownZone kKnownZones[] = {{L"UTC", 0min, 0min},
                                     {L"Asia/Kolkata", 330min, 0min},
                                     {L"America/St_Johns", -210min, 60min},
                                     {L"Australia/Lord_Howe", 630min, 30min}};

bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// Converts local times by the rules of the system's time zone, without the system's conversions.
class ZoneRules {
public:
    ZoneRules() : isDaylightNow_(GetTimeZoneInformation(&zone_) == TIME_ZONE_ID_DAYLIGHT) {}

    bool HasDaylight() const { return zone_.DaylightDate.wMonth != 0; }

    // The zone that TZ names. Null on Windows, which ignores TZ, and for any other zone.
    const KnownZone* FromEnvironment() const {
        wchar_t name[32] = L"";
        GetEnvironmentVariableW(L"TZ", name, 32);
        const auto zone = std::ranges::find(kKnownZones, name, &KnownZone::name);
        return IsWine() && zone != std::end(kKnownZones) ? &*zone : nullptr;
    }

    // Returns why clock changes cannot be tested, or null if they can. Wine assumes that daylight
    // saving time is one hour ahead. Where it is not, Wine's dates of the changes are wrong too.
    const char* ReasonToSkipClockChanges() const {
        if (!HasDaylight()) {
            return "this time zone has no daylight saving time";
        }
        const KnownZone* const known = FromEnvironment();
        return known != nullptr && known->forward != Daylight() - Standard()
                   ? "Wine has the wrong rules for this time zone"
                   : nullptr;
    }

    // Offsets east of UTC.
    minutes Standard() const { return -minutes(zone_.Bias + zone_.StandardBias); }
    minutes Daylight() const { return -minutes(zone_.Bias + zone_.DaylightBias); }
    minutes Today() const { return isDaylightNow_ ? Daylight() : Standard(); }

    // The local times at which the clocks go forward and back.
    LocalTime Forward(year inYear) const { return ChangeOf(zone_.DaylightDate, inYear); }
    LocalTime Back(year inYear) const { return ChangeOf(zone_.StandardDate, inYear); }

    // Converts a local time that is neither skipped nor repeated.
    UtcTime Utc(LocalTime local) const { return WithOffset(local, OffsetAt(local)); }

    static UtcTime WithOffset(LocalTime local, minutes offset) {
        return UtcTime(local.time_since_epoch() - offset);
    }

private:
    minutes OffsetAt(LocalTime local) const {
        if (!HasDaylight()) {
            return Standard();
        }
        const year inYear = year_month_day(floor<days>(local)).year();
        const LocalTime forward = Forward(inYear);
        const LocalTime back = Back(inYear);
        const bool isDaylight =
            forward < back ? local >= forward && local < back : local >= forward || local < back;
        return isDaylight ? Daylight() : Standard();
    }

    // A rule names the n-th weekday of a month; 5 means the last.
    static LocalTime ChangeOf(const SYSTEMTIME& rule, year inYear) {
        const weekday day(rule.wDayOfWeek);
        const year_month month = inYear / rule.wMonth;
        const local_days date =
            rule.wDay == 5 ? local_days(month / day[last]) : local_days(month / day[rule.wDay]);
        return date + hours(rule.wHour) + minutes(rule.wMinute);
    }

    TIME_ZONE_INFORMATION zone_{};
    bool isDaylightNow_;
};

std::wstring IsoText(UtcTime time) {
    const SYSTEMTIME fields = FieldsOf(LocalTime(time.time_since_epoch()));
    wchar_t text[40];
    swprintf_s(text, L"%04d-%02d-%02dT%02d:%02d:%02d.0000000Z", fields.wYear, fields.wMonth,
               fields.wDay, fields.wHour, fields.wMinute, fields.wSecond);
    return text;
}

// Returns events at half-hour intervals from `first` on, oldest first.
std::vector<RecordedEvent> HalfHourly(UtcTime first, std::size_t count) {
    std::vector<RecordedEvent> events = Events(count);
    for (std::size_t i = 0; i < count; ++i) {
        events[i].time = IsoText(first + static_cast<int>(i) * 30min);
    }
    return events;
}

// ctest runs these tests once for each time zone.
class FilterTimeZone : public FilterWindowTest {
protected:
    void Serve(const std::vector<RecordedEvent>& events) {
        events_ = events;
        Show(events);
    }

    void TypeTime(HWND picker, LocalTime time) const {
        if (!driver_->TimeOf(picker)) {
            Tick(picker);
        }
        Type(picker, FieldsOf(time));
    }
    void TypeFrom(LocalTime time) const { TypeTime(FromPicker(), time); }
    void TypeTo(LocalTime time) const { TypeTime(ToPicker(), time); }

    bool HasAskedFor(const ServerFilter& filter) const {
        return Queries().back() == ExpectedQuery(L"Application", filter);
    }

    // Applies the filters. Expects a query for the range, and its events in the list.
    void ExpectRange(const ServerFilter& filter) {
        app_->Expire(Timer::FilterApply);
        EXPECT_TRUE(WaitUntil([&] { return HasAskedFor(filter); }))
            << Queries().back() << "\nnot " << ExpectedQuery(L"Application", filter);
        std::vector<RowCells> rows;
        for (auto event = events_.rbegin(); event != events_.rend(); ++event) {
            if (IsFound(*event, filter)) {
                rows.push_back(ExpectedCells(*event, zone_.Today()));
            }
        }
        ASSERT_TRUE(app_->WaitForRows(static_cast<int>(rows.size())));
        for (std::size_t row = 0; row < rows.size(); ++row) {
            EXPECT_EQ(app_->list().Row(static_cast<int>(row)), rows[row]);
        }
    }

    // Applies an ambiguous bound. Expects a query with either of its UTC times.
    void ExpectEitherBound(LocalTime local) const {
        app_->Expire(Timer::FilterApply);
        const ServerFilter readings[] = {{.from = ZoneRules::WithOffset(local, zone_.Standard())},
                                         {.from = ZoneRules::WithOffset(local, zone_.Daylight())}};
        EXPECT_TRUE(WaitUntil([&] { return HasAskedFor(readings[0]) || HasAskedFor(readings[1]); }))
            << Queries().back();
    }

    const ZoneRules zone_;
    std::vector<RecordedEvent> events_;
};

TEST_F(FilterTimeZone, IsTheZoneOfTheEnvironment) {
    if (zone_.FromEnvironment() == nullptr) {
        GTEST_SKIP() << "only Wine takes its time zone from the environment";
    }
    EXPECT_EQ(zone_.Standard(), zone_.FromEnvironment()->standard);
}

TEST_F(FilterTimeZone, APickedRangeUsesTheOffsetOfItsDate) {
    for (const month inMonth : {January, July}) {
        const LocalTime from = local_days(kYear / inMonth / 15) + 12h;
        const LocalTime to = from + 59min + 59s;
        Serve(HalfHourly(zone_.Utc(from) - 1h, 8));
        TypeFrom(from);
        TypeTo(to);
        ExpectRange({.from = zone_.Utc(from), .until = zone_.Utc(to) + 1s});
        EXPECT_EQ(app_->list().RowCount(), 2);
        EXPECT_TRUE(ClosesCleanly(*app_));
    }
}

// The list shows every time at today's offset. The picker takes the shown time unchanged.
TEST_F(FilterTimeZone, SetAsUsesTheShownTimeAtTheOffsetOfItsDate) {
    for (const month inMonth : {January, July}) {
        const UtcTime first = sys_days(kYear / inMonth / 15);
        Serve(HalfHourly(first, 8));
        const int row = 3;  // the fifth from the oldest
        driver_->UseMenu(row, MenuEntry::SetAsFrom);
        const LocalTime shown((first + 4 * 30min + zone_.Today()).time_since_epoch());
        ASSERT_TRUE(WaitUntil([&] { return app_->From().has_value(); }));
        EXPECT_EQ(LocalTimeOf(*app_->From()), shown);
        ExpectRange({.from = zone_.Utc(shown)});
        EXPECT_TRUE(ClosesCleanly(*app_));
    }
}

TEST_F(FilterTimeZone, ARangeAcrossAClockChangeCoversTheElapsedHours) {
    if (const char* const reason = zone_.ReasonToSkipClockChanges()) {
        GTEST_SKIP() << reason;
    }
    const LocalTime changes[] = {zone_.Forward(kYear), zone_.Back(kYear)};
    const minutes passed[] = {6h - (zone_.Daylight() - zone_.Standard()),
                              6h + (zone_.Daylight() - zone_.Standard())};
    for (std::size_t i = 0; i < 2; ++i) {
        const LocalTime from = changes[i] - 3h;
        const LocalTime to = changes[i] + 3h;
        EXPECT_EQ(zone_.Utc(to) - zone_.Utc(from), passed[i]);
        Serve(HalfHourly(zone_.Utc(from) - 30min, 18));
        TypeFrom(from);
        TypeTo(to);
        ExpectRange({.from = zone_.Utc(from), .until = zone_.Utc(to) + 1s});
        EXPECT_EQ(app_->list().RowCount(), passed[i] / 30min + 1)
            << "both ends belong to the range";
        EXPECT_TRUE(ClosesCleanly(*app_));
    }
}

TEST_F(FilterTimeZone, ASkippedOrRepeatedLocalTimeUsesEitherOffset) {
    if (const char* const reason = zone_.ReasonToSkipClockChanges()) {
        GTEST_SKIP() << reason;
    }
    Serve(HalfHourly(zone_.Utc(zone_.Forward(kYear) - 3h), 2));
    TypeFrom(zone_.Forward(kYear) + 10min);
    ExpectEitherBound(zone_.Forward(kYear) + 10min);
    TypeFrom(zone_.Back(kYear) - 10min);
    ExpectEitherBound(zone_.Back(kYear) - 10min);
}

}  // namespace
}  // namespace tavrin::test
