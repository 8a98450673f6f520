#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_driver.h"
#include "window/filters/filter_expectations.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

using Names = std::vector<std::wstring>;

constexpr SYSTEMTIME kTen{2024, 3, 0, 5, 10, 0, 0, 0};
constexpr SYSTEMTIME kSecondPastTen{2024, 3, 0, 5, 10, 0, 1, 0};
constexpr SYSTEMTIME kEleven{2024, 3, 0, 5, 11, 0, 0, 0};

// A timer may end a little early by the tick count.
constexpr ULONGLONG kClockError = 30;

const std::wstring kSources[] = {L"Acme", L"Beta", L"Gamma"};

class FilterRules : public WindowTest {
protected:
    // Two events of each source.
    void Show(const std::wstring& script = {}) {
        std::vector<RecordedEvent> events = Events(6);
        for (std::size_t i = 0; i < events.size(); ++i) {
            events[i].provider = kSources[i % 3];
        }
        logs_.WriteEvents(L"Application", events);
        Begin(script);
        ASSERT_TRUE(app_->SelectPath(kApplication));
        if (script.empty()) {
            ASSERT_TRUE(app_->WaitForRows(6));
            ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 3; }));
        }
    }

    void Begin(const std::wstring& script = {}, bool recordCalls = true) {
        AppOptions options = Serving(logs_, script);
        options.recordCalls = recordCalls;
        Start(options);
        driver_ = std::make_unique<FilterDriver>(*app_);
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    std::size_t Loads() const { return driver_->Queries(L"Application").size(); }

    void TickFrom() const {
        driver_->ClickPickerBox(app_->controls().fromPicker);
        ASSERT_TRUE(WaitUntil([&] { return app_->From().has_value(); }));
    }
    void TickTo() const {
        driver_->ClickPickerBox(app_->controls().toPicker);
        ASSERT_TRUE(WaitUntil([&] { return app_->To().has_value(); }));
    }
    void UntickFrom() const {
        driver_->ClickPickerBox(app_->controls().fromPicker);
        ASSERT_TRUE(WaitUntil([&] { return !app_->From(); }));
    }
    void TypeFrom(const SYSTEMTIME& time) const {
        driver_->TypePickerTime(app_->controls().fromPicker, time);
    }
    void TypeTo(const SYSTEMTIME& time) const {
        driver_->TypePickerTime(app_->controls().toPicker, time);
    }

    // Both pickers on these times, applied.
    void SetRange(const SYSTEMTIME& from, const SYSTEMTIME& to) const {
        TickTo();
        TypeTo(to);
        TickFrom();
        TypeFrom(from);
        driver_->Expire(FilterTimer::Apply);
    }

    const Recording logs_{kSomeChannels};
    std::unique_ptr<FilterDriver> driver_;
};

TEST_F(FilterRules, AFromAndAToOnTheSameSecondAreARange) {
    Show();
    SetRange(kTen, kTen);
    EXPECT_TRUE(app_->WaitForRows(0));
    EXPECT_EQ(app_->Status(), L"");
    EXPECT_EQ(app_->NodeName(), L"Application (time range)");
}

TEST_F(FilterRules, AFromASecondBehindToIsRefusedAndTheFormerRangeStays) {
    Show();
    SetRange(kTen, kTen);
    ASSERT_TRUE(app_->WaitForRows(0));
    const std::size_t loads = Loads();
    TypeFrom(kSecondPastTen);
    EXPECT_TRUE(app_->WaitForStatus(kRangeError));
    EXPECT_EQ(Loads(), loads);
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(WaitUntil([&] {
        const auto queries = driver_->Queries(L"System");
        const auto former = driver_->Queries(L"Application").back();
        return queries.size() == 1 && queries[0].substr(queries[0].find(L"TimeCreated")) ==
                                          former.substr(former.find(L"TimeCreated"));
    })) << "the next channel is asked with the range that stands";
}

TEST_F(FilterRules, TheMessageOfARefusedRangeStaysUntilAnotherRangeIsTaken) {
    Show();
    SetRange(kTen, kTen);
    TypeFrom(kSecondPastTen);
    ASSERT_TRUE(app_->WaitForStatus(kRangeError));
    TypeFrom(kTen);
    driver_->Expire(FilterTimer::Apply);
    app_->Synchronise();
    EXPECT_EQ(app_->Status(), kRangeError) << "the range in force is no other one";
    TypeTo(kEleven);
    EXPECT_TRUE(app_->WaitForStatus(L""));
}

TEST_F(FilterRules, APickerTickedAgainStartsAtTodayAgain) {
    Show();
    TickFrom();
    const SYSTEMTIME today = *app_->From();
    TypeFrom(kTen);
    UntickFrom();
    TickFrom();
    app_->Synchronise();
    EXPECT_EQ(LocalTimeOf(*app_->From()), LocalTimeOf(today));
}

TEST_F(FilterRules, EveryChangeOfAPickerPutsTheReloadOff) {
    Show();
    TickTo();
    TypeTo(kEleven);
    const ULONGLONG last = GetTickCount64();
    const std::wstring asked = ExpectedQuery(
        L"Application",
        {.until =
             UtcTime(LocalTimeOf(kEleven).time_since_epoch() -
                     OffsetsOfThisZone(UtcTime(LocalTimeOf(kEleven).time_since_epoch())).chosen) +
             1s});
    ASSERT_TRUE(WaitUntil([&] { return driver_->Queries(L"Application").back() == asked; }));
    EXPECT_GE(GetTickCount64() - last + kClockError, 500u);
}

TEST_F(FilterRules, TheTextIsAppliedAFifthOfASecondAfterTheLastKey) {
    Show();
    app_->TypeFilter(L"Bet");
    TypeText(L"a");
    const ULONGLONG last = GetTickCount64();
    ASSERT_TRUE(app_->WaitForRows(2));
    EXPECT_GE(GetTickCount64() - last + kClockError, 200u);
}

TEST_F(FilterRules, RecordsThatArriveLaterMeetTheTextOfThatMoment) {
    Gate gate;
    Show(gate.Block(L"EvtRender"));
    ASSERT_TRUE(gate.WaitForCall());
    app_->TypeFilter(L"gamma");
    ASSERT_EQ(app_->list().RowCount(), 0);
    gate.Open();
    EXPECT_TRUE(app_->WaitForRows(2));
    EXPECT_EQ(app_->list().Cell(0, 2), L"Gamma");
    EXPECT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 3; }))
        << "hidden records name their sources too";
}

TEST_F(FilterRules, ATickLeavesTheRowInItsPlaceWhileNothingIsReadAnew) {
    Show();
    SetRange(kTen, kTen);
    ASSERT_TRUE(app_->WaitForRows(0));
    TypeFrom(kSecondPastTen);
    ASSERT_TRUE(app_->WaitForStatus(kRangeError));
    driver_->ClickSource(2);
    ASSERT_TRUE(WaitUntil(
        [&] { return TextOf(app_->controls().sourcesCaption) == L"Sources (1 selected)"; }));
    driver_->Expire(FilterTimer::Apply);
    app_->Synchronise();
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{L"Acme", L"Beta", L"Gamma"}));
    EXPECT_TRUE(app_->sources().IsChecked(2));
    EXPECT_EQ(app_->NodeName(), L"Application (1 source, time range)");
}

TEST_F(FilterRules, NamesOfNewEventsJoinTheListAndLeaveTheTicks) {
    Show();
    driver_->ClickSource(1);
    ASSERT_TRUE(app_->WaitForRows(2));
    logs_.AppendEvent(L"Application", {.recordId = 7, .provider = L"Aardvark"});
    driver_->ClickSource(0);
    ASSERT_TRUE(app_->WaitForRows(7));
    EXPECT_TRUE(WaitUntil([&] {
        return app_->sources().FirstColumn() == Names{L"Aardvark", L"Acme", L"Beta", L"Gamma"};
    }));
    driver_->ClickSource(2);
    ASSERT_TRUE(app_->WaitForRows(2));
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{L"Beta", L"Aardvark", L"Acme", L"Gamma"}))
        << "names without a loaded event stay";
    EXPECT_TRUE(app_->sources().IsChecked(0));
}

TEST_F(FilterRules, ThePanelIsEnabledForChannelsOnly) {
    Begin();
    const auto isEnabled = [&](bool enabled) {
        const MainWindowControls& controls = app_->controls();
        for (const HWND control :
             {controls.sourcesSearch, controls.sourcesList, controls.showAllSources}) {
            if ((IsWindowEnabled(control) != FALSE) != enabled) {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(isEnabled(false));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(isEnabled(true));
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    EXPECT_TRUE(isEnabled(false));
    EXPECT_EQ(TextOf(app_->controls().sourcesCaption), L"Sources");
    EXPECT_EQ(app_->sources().RowCount(), 0);
}

TEST_F(FilterRules, F5RefreshesRightAfterAPickersCheckBoxWasClicked) {
    Show();
    TickTo();
    driver_->Expire(FilterTimer::Apply);
    ASSERT_TRUE(WaitUntil([&] { return Loads() == 2; }));
    PressKey(VK_F5);
    EXPECT_TRUE(WaitUntil([&] { return Loads() == 3; }));
}

// A channel of 25,000 events: without a text its load pauses after some ten thousand.
class FilterLimit : public FilterRules {
protected:
    static constexpr int kEvents = 25'000;
    static constexpr int kPage = 10'112;

    void SetUp() override {
        Begin(L"channel name=Big type=Operational providers=2 events=" + std::to_wstring(kEvents) +
                  L"\n",
              false);
        ASSERT_TRUE(app_->SelectPath({L"Applications and Service Logs", L"Big"}));
        ASSERT_TRUE(WaitUntil([&] { return app_->list().RowCount() >= 10'000; }));
        ASSERT_LT(app_->list().RowCount(), kEvents);
    }
};

TEST_F(FilterLimit, IsLiftedByATextThatMatchesNothing) {
    app_->TypeFilter(L"no such");
    EXPECT_TRUE(app_->WaitForRows(0));
    app_->TypeFilter(L"");
    EXPECT_TRUE(app_->WaitForRows(kEvents)) << "all was loaded behind the empty list";
}

TEST_F(FilterLimit, IsLiftedForAFilterReloadAndARefreshWhileATextStands) {
    const DebugOutput output;
    const DWORD process = app_->process().id();
    const std::wstring kFinished = L"Finished draining. Killing timer.";
    // From the line that announces a load to the one that ends it.
    const auto loadsToItsEnd = [&](const std::wstring& announcement, std::size_t from) {
        return output.WaitFor(process, announcement, kPatience, from) &&
               output.WaitFor(process, kFinished, kPatience, from);
    };
    app_->TypeFilter(L"/");
    ASSERT_TRUE(output.WaitFor(process, kFinished, kPatience));
    ASSERT_TRUE(app_->WaitForRows(kEvents));

    std::size_t before = output.Lines(process).size();
    driver_->ClickSource(0);
    ASSERT_TRUE(loadsToItsEnd(L"Applying filters to Big", before)) << "the load does not pause";
    const int ofOneSource = app_->list().RowCount();
    EXPECT_GT(ofOneSource, kPage);
    EXPECT_LT(ofOneSource, kEvents);

    before = output.Lines(process).size();
    PressKey(VK_F5);
    ASSERT_TRUE(loadsToItsEnd(L"Refreshing Big", before)) << "the load does not pause";
    EXPECT_EQ(app_->list().RowCount(), ofOneSource);
    EXPECT_EQ(app_->FilterText(), L"/");
}

// Keys of the event log's registry, made for one channel.
class FilterRegistry : public FilterRules {
protected:
    ~FilterRegistry() override {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey);
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
    }

    // Shows a channel without events for which the registry has these names.
    void Show(const Names& names) {
        for (const std::wstring& name : names) {
            HKEY key = nullptr;
            const std::wstring path = std::wstring(kKey) + L"\\" + name;
            if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                &key, nullptr) != ERROR_SUCCESS) {
                GTEST_SKIP() << "needs the right to write to the event log's registry key";
            }
            RegCloseKey(key);
        }
        Begin(L"channel name=\"Tavrin Test Log\" type=Operational\n");
        ASSERT_TRUE(app_->SelectPath({L"Applications and Service Logs", L"Tavrin Test Log"}));
    }

    static constexpr const wchar_t* kKey =
        L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Tavrin Test Log";
};

TEST_F(FilterRegistry, WithoutAKeyOffersNothing) {
    Show({});
    EXPECT_EQ(app_->sources().RowCount(), 0);
    EXPECT_EQ(TextOf(app_->controls().sourcesCaption), L"Sources (all)");
}

TEST_F(FilterRegistry, OffersItsOneName) {
    Show({L"The only one"});
    EXPECT_EQ(app_->sources().FirstColumn(), Names{L"The only one"});
}

TEST_F(FilterRegistry, OffersThreeHundredNamesInOrder) {
    Names names;
    for (int number = 300; number < 600; ++number) {
        names.push_back(L"Source " + std::to_wstring(number));
    }
    Show(names);
    EXPECT_EQ(app_->sources().FirstColumn(), names);
}

// A search text is read up to 255 characters.
TEST_F(FilterRegistry, OffersANameOf255CharactersAndFindsItByALongerText) {
    const std::wstring longest(255, L'x');
    Show({longest, L"y"});
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{longest, L"y"}));
    SendMessageW(app_->controls().sourcesSearch, WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>((longest + L"z").c_str()));
    EXPECT_TRUE(WaitUntil([&] { return app_->sources().FirstColumn() == Names{longest}; }));
}

}  // namespace
}  // namespace tavrin::test
