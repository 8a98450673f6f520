#include <set>
#include <string>
#include <vector>

#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/filters/filter_expectations.h"
#include "window/filters/filter_window_test.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::March;
using std::chrono::year;

constexpr LocalTime kFrom = local_days(year(2024) / March / 1) + 8h;
constexpr LocalTime kTo = local_days(year(2024) / March / 1) + 9h;

// Compares the queries that reach the service with the filters set in the window.
class FilterQuery : public FilterWindowTest {
protected:
    // Shows an Application log with one event per source, and ticks all sources.
    void ShowTicked(const std::vector<std::wstring>& sources) {
        std::vector<RecordedEvent> events = Events(sources.size());
        for (std::size_t i = 0; i < events.size(); ++i) {
            events[i].provider = sources[i];
            events[i].time = L"2024-03-01T08:30:00.0000000Z";
        }
        Show(events);
        const int count = static_cast<int>(sources.size());
        ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == count; }));
        for (int row = 0; row < count; ++row) {
            app_->sources().SetChecked(row, true);
        }
    }

    // A newly ticked picker shows a time of today, so types the time.
    void Set(HWND picker, LocalTime time) const {
        Tick(picker);
        Type(picker, FieldsOf(time));
    }

    // Applies the filters and compares the query of the load that follows.
    void ExpectQuery(const ServerFilter& filter) const {
        app_->Expire(Timer::FilterApply);
        const std::wstring expected = ExpectedQuery(L"Application", filter);
        WaitUntil([&] { return Queries().back() == expected; });
        EXPECT_EQ(Queries().back(), expected);
    }

    static UtcTime Utc(LocalTime local) {
        const UtcTime same(local.time_since_epoch());
        return same - OffsetsOfThisZone(same).chosen;
    }
    // The chosen second belongs to the range, so the bound is one second later.
    static UtcTime AfterUtc(LocalTime local) { return Utc(local) + 1s; }
};

TEST_F(FilterQuery, HasTheSourceAndTheBoundsThatAreSet) {
    ShowTicked({L"MsiInstaller"});
    Set(ToPicker(), kTo);
    ExpectQuery({.sources = {L"MsiInstaller"}, .until = AfterUtc(kTo)});
    Set(FromPicker(), kFrom);
    ExpectQuery({.sources = {L"MsiInstaller"}, .from = Utc(kFrom), .until = AfterUtc(kTo)});
    Untick(ToPicker());
    ExpectQuery({.sources = {L"MsiInstaller"}, .from = Utc(kFrom)});
    driver_->ClickShowAll();
    ExpectQuery({.from = Utc(kFrom)});
}

TEST_F(FilterQuery, NamesReachTheServiceQuotedAndEscapedOnce) {
    const std::vector<std::wstring> names = {
        L"A \"quoted\" one",  L"B & C <d>",           L"O'Brien",
        L"R&amp;D",           L"\u00C9v\u00E9nement", L"\u0416\u0443\u0440\u043D\u0430\u043B",
        L"\u65E5\u672C\u8A9E"};
    ShowTicked(names);
    ExpectQuery({.sources = std::set(names.begin(), names.end())});
    EXPECT_NE(Queries().back().find(L"@Name=&apos;A &quot;quoted&quot; one&apos;"),
              std::wstring::npos);
    EXPECT_TRUE(app_->WaitForRows(static_cast<int>(names.size()))) << "each is found";
}

TEST_F(FilterQuery, ANameWithBothKindsOfQuotesStaysTickedButIsNotQueried) {
    const DebugOutput output;
    const std::wstring unquotable = L"Both \" and '";
    ShowTicked({L"A", unquotable});
    ExpectQuery({.sources = {L"A", unquotable}});
    EXPECT_EQ(Queries().back().find(L"Both"), std::wstring::npos);
    EXPECT_TRUE(app_->WaitForRows(1));
    EXPECT_TRUE(output.WaitFor(
        app_->process().id(),
        L"BuildChannelQuery: skipping provider with both quote kinds: " + unquotable, kPatience));
    EXPECT_EQ(app_->sources().FirstColumn(), (std::vector<std::wstring>{L"A", unquotable}));
    EXPECT_TRUE(app_->sources().IsChecked(1));
    EXPECT_EQ(app_->NodeName(), L"Application (2 sources)");
    EXPECT_EQ(SourcesCaption(), L"Sources (2 selected)");
}

TEST_F(FilterQuery, IsMadeOfAPendingChangeBeforeAnotherChannelIsShown) {
    ShowTicked({L"A"});
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(WaitUntil(
        [&] { return Queries().back() == ExpectedQuery(L"Application", {.sources = {L"A"}}); }));
}

TEST_F(FilterQuery, AnUnquotableNameAloneFiltersNothing) {
    ShowTicked({L"Both \" and '"});
    app_->Expire(Timer::FilterApply);
    EXPECT_TRUE(HoldsFor(300ms, [&] { return Queries().size() == 1; }));
    EXPECT_EQ(app_->NodeName(), L"Application (1 source)");
}

}  // namespace
}  // namespace tavrin::test
