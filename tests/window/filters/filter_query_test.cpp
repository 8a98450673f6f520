#include <memory>
#include <set>
#include <string>
#include <vector>

#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_driver.h"
#include "window/filters/filter_expectations.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::March;
using std::chrono::year;

constexpr LocalTime kFrom = local_days(year(2024) / March / 1) + 8h;
constexpr LocalTime kTo = local_days(year(2024) / March / 1) + 9h;

// One event of each provider, between the two times; names in ascending order.
std::vector<RecordedEvent> OneOfEach(const std::vector<std::wstring>& providers) {
    std::vector<RecordedEvent> events = Events(providers.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].provider = providers[i];
        events[i].time = L"2024-03-01T08:30:00.0000000Z";
    }
    return events;
}

std::vector<std::wstring> NumberedNames(int count) {
    std::vector<std::wstring> names;
    for (int number = 1; number <= count; ++number) {
        names.push_back((number < 10 ? L"Source 0" : L"Source ") + std::to_wstring(number));
    }
    return names;
}

int SelectsOf(const std::wstring& query) {
    int selects = 0;
    for (std::size_t at = 0; (at = query.find(L"<Select ", at)) != std::wstring::npos; ++at) {
        ++selects;
    }
    return selects;
}

// What reaches the service when filters are set in the window.
class FilterQuery : public WindowTest {
protected:
    // Shows a channel that has one event of each of these sources.
    void Show(const std::wstring& channel, const std::vector<std::wstring>& path,
              const std::vector<std::wstring>& sources) {
        channel_ = channel;
        logs_.WriteEvents(channel, OneOfEach(sources));
        AppOptions options = Serving(logs_);
        options.recordCalls = true;
        Start(options);
        driver_ = std::make_unique<FilterDriver>(*app_);
        ASSERT_TRUE(BringToFront(app_->window()));
        ASSERT_TRUE(app_->SelectPath(path));
        ASSERT_TRUE(app_->WaitForRows(static_cast<int>(sources.size())));
        ASSERT_TRUE(WaitUntil(
            [&] { return app_->sources().RowCount() == static_cast<int>(sources.size()); }));
    }

    void ShowApplication(const std::vector<std::wstring>& sources) {
        Show(L"Application", kApplication, sources);
    }

    // Ticks rows of the sources list as an assistive program does.
    void Tick(int first, int end) const {
        for (int row = first; row < end; ++row) {
            app_->sources().SetChecked(row, true);
        }
    }

    void SetFrom(LocalTime time) { SetBound(app_->controls().fromPicker, time); }
    void SetTo(LocalTime time) { SetBound(app_->controls().toPicker, time); }

    void ClearFrom() const {
        driver_->ClickPickerBox(app_->controls().fromPicker);
        ASSERT_TRUE(WaitUntil([&] { return !app_->From(); }));
    }
    void ClearTo() const {
        driver_->ClickPickerBox(app_->controls().toPicker);
        ASSERT_TRUE(WaitUntil([&] { return !app_->To(); }));
    }

    // Applies what was set; the load that follows asks for what the filters say.
    void ExpectQuery(const ServerFilter& filter) const {
        driver_->Expire(FilterTimer::Apply);
        const std::wstring expected = ExpectedQuery(channel_, filter);
        WaitUntil([&] { return Queries().back() == expected; });
        EXPECT_EQ(Queries().back(), expected);
    }

    std::vector<std::wstring> Queries() const { return driver_->Queries(channel_); }

    static UtcTime Utc(LocalTime local) {
        const UtcTime same(local.time_since_epoch());
        return same - OffsetsOfThisZone(same).chosen;
    }
    // The chosen second is inside the range.
    static UtcTime AfterUtc(LocalTime local) { return Utc(local) + 1s; }

    const Recording logs_{kSomeChannels};
    std::unique_ptr<FilterDriver> driver_;
    std::wstring channel_;

private:
    // A ticked picker shows a time of today at first.
    void SetBound(HWND picker, LocalTime time) {
        driver_->ClickPickerBox(picker);
        const bool isFrom = picker == app_->controls().fromPicker;
        ASSERT_TRUE(WaitUntil([&] { return (isFrom ? app_->From() : app_->To()).has_value(); }));
        driver_->TypePickerTime(picker, FieldsOf(time));
    }
};

TEST_F(FilterQuery, WithoutFiltersTheWholeChannelIsAskedFor) {
    ShowApplication({L"Application Error", L"MsiInstaller"});
    EXPECT_EQ(Queries(), (std::vector<std::wstring>{L"*"}));
}

TEST_F(FilterQuery, TwoSourcesAreAlternatives) {
    ShowApplication({L"Application Error", L"MsiInstaller"});
    Tick(0, 2);
    ExpectQuery({.sources = {L"Application Error", L"MsiInstaller"}});
    EXPECT_EQ(Queries().back(),
              L"<QueryList><Query Id='0' Path='Application'><Select Path='Application'>"
              L"*[System[Provider[@Name=&quot;Application Error&quot; or "
              L"@Name=&quot;MsiInstaller&quot;]]]</Select></Query></QueryList>");
}

TEST_F(FilterQuery, FromAloneIsAnInclusiveBound) {
    Show(L"System", kSystem, {L"A"});
    SetFrom(kFrom);
    ExpectQuery({.from = Utc(kFrom)});
    EXPECT_TRUE(Queries().back().ends_with(L":00.000Z&apos;]]]</Select></Query></QueryList>"));
}

TEST_F(FilterQuery, ToAloneIsAnExclusiveBoundASecondLater) {
    ShowApplication({L"A"});
    SetTo(kTo);
    ExpectQuery({.until = AfterUtc(kTo)});
    EXPECT_EQ(Queries().back().find(L" and "), std::wstring::npos);
}

TEST_F(FilterQuery, BothBoundsWithoutASourceStandAlone) {
    ShowApplication({L"A"});
    SetTo(kTo);
    SetFrom(kFrom);
    ExpectQuery({.from = Utc(kFrom), .until = AfterUtc(kTo)});
    EXPECT_EQ(Queries().back().find(L'('), std::wstring::npos);
}

TEST_F(FilterQuery, ASourceWithBothBoundsStandsInParentheses) {
    ShowApplication({L"MsiInstaller"});
    SetTo(kTo);
    ExpectQuery({.until = AfterUtc(kTo)});
    Tick(0, 1);
    ExpectQuery({.sources = {L"MsiInstaller"}, .until = AfterUtc(kTo)});
    SetFrom(kFrom);
    ExpectQuery({.sources = {L"MsiInstaller"}, .from = Utc(kFrom), .until = AfterUtc(kTo)});
    ClearTo();
    ExpectQuery({.sources = {L"MsiInstaller"}, .from = Utc(kFrom)});
}

TEST_F(FilterQuery, NamesReachTheServiceQuotedAndEscapedOnce) {
    const std::vector<std::wstring> names = {
        L"A \"quoted\" one",  L"B & C <d>",           L"O'Brien",
        L"R&amp;D",           L"\u00C9v\u00E9nement", L"\u0416\u0443\u0440\u043D\u0430\u043B",
        L"\u65E5\u672C\u8A9E"};
    ShowApplication(names);
    Tick(0, static_cast<int>(names.size()));
    ExpectQuery({.sources = std::set(names.begin(), names.end())});
    EXPECT_NE(Queries().back().find(L"@Name=&apos;A &quot;quoted&quot; one&apos;"),
              std::wstring::npos);
    EXPECT_TRUE(app_->WaitForRows(static_cast<int>(names.size()))) << "each is found";
}

TEST_F(FilterQuery, ANameWithBothKindsOfQuotesStaysTickedButIsNotAskedFor) {
    const DebugOutput output;
    const std::wstring unquotable = L"Both \" and '";
    ShowApplication({L"A", unquotable});
    Tick(0, 2);
    ExpectQuery({.sources = {L"A", unquotable}});
    EXPECT_EQ(Queries().back().find(L"Both"), std::wstring::npos);
    EXPECT_TRUE(app_->WaitForRows(1));
    EXPECT_TRUE(output.WaitFor(
        app_->process().id(),
        L"BuildChannelQuery: skipping provider with both quote kinds: " + unquotable, kPatience));
    EXPECT_EQ(app_->sources().FirstColumn(), (std::vector<std::wstring>{L"A", unquotable}));
    EXPECT_TRUE(app_->sources().IsChecked(1));
    EXPECT_EQ(app_->NodeName(), L"Application (2 sources)");
    EXPECT_EQ(TextOf(app_->controls().sourcesCaption), L"Sources (2 selected)");
}

TEST_F(FilterQuery, OnlyANameThatCannotBeQuotedIsNoFilterAndReadsNothingAnew) {
    ShowApplication({L"Both \" and '"});
    Tick(0, 1);
    driver_->Expire(FilterTimer::Apply);
    app_->Synchronise();
    EXPECT_TRUE(HoldsFor(300ms, [&] { return Queries().size() == 1; }));
    EXPECT_EQ(app_->NodeName(), L"Application (1 source)");
}

// Sixteen names fit into one Select. The bounds are set at each number of sources in turn: none,
// From, both, To.
TEST_F(FilterQuery, SixteenSourcesShareASelectWithAndWithoutBounds) {
    const std::vector<std::wstring> names = NumberedNames(33);
    ShowApplication(names);
    const struct {
        int sources;
        int selects;
    } kSteps[] = {{1, 1}, {16, 1}, {17, 2}, {32, 2}, {33, 3}};
    ServerFilter filter;
    int ticked = 0;
    for (const auto& step : kSteps) {
        SCOPED_TRACE(step.sources);
        // The ticked ones stand first, so that the next ones stand where they always stood.
        Tick(ticked, step.sources);
        ticked = step.sources;
        filter.sources = std::set(names.begin(), names.begin() + ticked);
        ExpectQuery(filter);
        SetFrom(kFrom);
        filter.from = Utc(kFrom);
        ExpectQuery(filter);
        SetTo(kTo);
        filter.until = AfterUtc(kTo);
        ExpectQuery(filter);
        EXPECT_EQ(SelectsOf(Queries().back()), step.selects);
        ClearFrom();
        filter.from.reset();
        ExpectQuery(filter);
        ClearTo();
        filter.until.reset();
        ExpectQuery(filter);
    }
}

}  // namespace
}  // namespace tavrin::test
