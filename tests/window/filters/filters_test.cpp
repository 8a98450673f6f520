#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// Ten events, a minute apart, in turn of three providers, with levels from 1 to 4.
class Filters : public WindowTest {
protected:
    void SetUp() override {
        const wchar_t* const kProviders[] = {L"Acme-Mail", L"Beta", L"MsiInstaller"};
        std::vector<RecordedEvent> events = Events(10);
        for (std::size_t i = 0; i < events.size(); ++i) {
            events[i].provider = kProviders[i % 3];
            events[i].level = static_cast<unsigned>(i % 4) + 1;
            events[i].processId = static_cast<std::uint32_t>(100 + i);
            events[i].time = L"2024-03-05T07:0" + std::to_wstring(i) + L":30.0000000Z";
        }
        logs_.WriteEvents(L"Application", events);
        logs_.WriteEvents(L"System", Events(5));
        AppOptions options = Serving(logs_);
        options.recordCalls = true;
        Start(options);
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(10));
        ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 3; }));
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    std::wstring SourcesCaption() const { return TextOf(app_->controls().sourcesCaption); }

    // The queries of the Application log so far; each load makes one.
    int Queries() const {
        int count = 0;
        for (const std::wstring& call : app_->process().Calls()) {
            count += call.find(L"EvtQuery(") != std::wstring::npos &&
                             call.find(L"0x201") != std::wstring::npos
                         ? 1
                         : 0;
        }
        return count;
    }

    // The check box at a picker's left end.
    void ClickCheckBox(HWND picker) const {
        RECT rect{};
        GetWindowRect(picker, &rect);
        ClickLeft({rect.left + 10, (rect.top + rect.bottom) / 2});
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(Filters, ATypedTextShowsTheRowsThatMatchIt) {
    const struct {
        const wchar_t* text;
        int rows;
    } kTexts[] = {
        {L"error", 3},      // the level's name
        {L"acme-mail", 4},  // the provider's whole name
        {L"07:03:", 1},     // in the time, if local time is at full hours from UTC
        {L"105", 1},        // the process
        {L"A message", 0},  // the message is not searched
        {L"1000", 0},       // nor is the event's number
        {L"\u00C9", 0},    {L"", 10},
    };
    for (const auto& expected : kTexts) {
        app_->TypeFilter(expected.text);
        int rows = expected.rows;
        if (std::wstring_view(expected.text) == L"07:03:") {
            const std::wstring time = LocalTimeText({2024, 3, 2, 5, 7, 3, 30, 0});
            app_->TypeFilter(time);
            rows = 1;
        }
        EXPECT_TRUE(app_->WaitForRows(rows)) << expected.text;
        EXPECT_TRUE(WaitUntil([&] { return app_->Loaded() == std::to_wstring(rows); }));
    }
    EXPECT_EQ(Queries(), 1) << "the text filter asks nothing of the service";
}

TEST_F(Filters, ARefreshKeepsTheText) {
    app_->TypeFilter(L"beta");
    ASSERT_TRUE(app_->WaitForRows(3));
    PressKey(VK_F5);
    EXPECT_TRUE(WaitUntil([&] { return Queries() == 2; }));
    EXPECT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->FilterText(), L"beta");
}

TEST_F(Filters, ATickedSourceReadsTheChannelForItAlone) {
    EXPECT_EQ(app_->sources().FirstColumn(),
              (std::vector<std::wstring>{L"Acme-Mail", L"Beta", L"MsiInstaller"}));
    EXPECT_EQ(SourcesCaption(), L"Sources (all)");
    const RECT row = app_->sources().RowRect(1, LVIR_BOUNDS);
    ClickLeft({row.left + 9, (row.top + row.bottom) / 2});
    EXPECT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->sources().FirstColumn(),
              (std::vector<std::wstring>{L"Beta", L"Acme-Mail", L"MsiInstaller"}))
        << "ticked names come first";
    EXPECT_TRUE(app_->sources().IsChecked(0));
    EXPECT_EQ(SourcesCaption(), L"Sources (1 selected)");
    EXPECT_EQ(app_->NodeName(), L"Application (1 source)");
    EXPECT_EQ(app_->TotalCaption(), L" In log: ");
    EXPECT_EQ(app_->Total(), L"10") << "the count is of the whole log";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(app_->list().Cell(i, 2), L"Beta");
    }
}

TEST_F(Filters, TicksInQuickSuccessionReadTheChannelOnce) {
    app_->sources().SetChecked(0, true);
    app_->sources().SetChecked(1, true);
    app_->sources().SetChecked(2, true);
    EXPECT_EQ(SourcesCaption(), L"Sources (3 selected)");
    EXPECT_EQ(app_->NodeName(), L"Application (3 sources)");
    EXPECT_TRUE(WaitUntil([&] { return Queries() == 2; }));
    EXPECT_TRUE(HoldsFor(700ms, [&] { return Queries() == 2; }));
    EXPECT_EQ(app_->list().RowCount(), 10);
}

TEST_F(Filters, ShowAllSourcesUnticksAndReadsTheWholeChannel) {
    app_->sources().SetChecked(2, true);
    ASSERT_TRUE(app_->WaitForRows(3));
    ClickLeft(CentreOf(app_->controls().showAllSources));
    EXPECT_TRUE(app_->WaitForRows(10));
    EXPECT_EQ(SourcesCaption(), L"Sources (all)");
    EXPECT_EQ(app_->NodeName(), L"Application");
    EXPECT_EQ(app_->TotalCaption(), L" Total: ");
    for (int row = 0; row < 3; ++row) {
        EXPECT_FALSE(app_->sources().IsChecked(row));
    }
}

TEST_F(Filters, TickedSourcesComeFirstWhateverIsSearched) {
    app_->sources().SetChecked(1, true);
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(GiveFocus(app_->controls().sourcesSearch));
    TypeText(L"MSI");
    EXPECT_TRUE(WaitUntil([&] {
        return app_->sources().FirstColumn() == std::vector<std::wstring>{L"Beta", L"MsiInstaller"};
    }));
    EXPECT_TRUE(app_->sources().IsChecked(0));
    EXPECT_FALSE(app_->sources().IsChecked(1));
}

TEST_F(Filters, TheTicksOfAChannelSurviveLeavingIt) {
    app_->sources().SetChecked(0, true);
    ASSERT_TRUE(app_->WaitForRows(4));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    ASSERT_TRUE(app_->WaitForRows(5));
    EXPECT_EQ(SourcesCaption(), L"Sources (all)");
    EXPECT_EQ(app_->NodeName(), L"System");
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_EQ(SourcesCaption(), L"Sources (1 selected)");
    EXPECT_TRUE(app_->WaitForRows(4));
    EXPECT_EQ(app_->list().Cell(0, 2), L"Mail");
}

TEST_F(Filters, ATickJustBeforeASwitchIsNotLost) {
    app_->sources().SetChecked(0, true);
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(WaitUntil([&] { return Queries() == 3; })) << "both channels were read";
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(app_->WaitForRows(4));
}

TEST_F(Filters, SetAsFromAndToTakeTheSelectedRowsTime) {
    app_->list().Select(3);
    app_->Command(IDM_SET_AS_FROM);
    ASSERT_TRUE(app_->WaitForRows(4));
    EXPECT_EQ(app_->NodeName(), L"Application (time range)");
    ASSERT_TRUE(app_->From());
    const SYSTEMTIME from = *app_->From();
    wchar_t text[32];
    swprintf_s(text, L"%02d/%02d/%02d %02d:%02d:%02d", from.wDay, from.wMonth, from.wYear,
               from.wHour, from.wMinute, from.wSecond);
    EXPECT_EQ(text, LocalTimeText({2024, 3, 2, 5, 7, 6, 30, 0}));

    app_->list().Select(1);
    app_->Command(IDM_SET_AS_TO);
    EXPECT_TRUE(app_->WaitForRows(3)) << "the chosen second is inside";
    EXPECT_EQ(app_->list().Cell(0, 5), L"9");
    EXPECT_EQ(app_->list().Cell(2, 5), L"7");
    EXPECT_EQ(app_->TotalCaption(), L" In log: ");
}

TEST_F(Filters, SetAsWithoutASelectedRowDoesNothing) {
    app_->Command(IDM_SET_AS_FROM);
    app_->Command(IDM_SET_AS_TO);
    app_->Synchronise();
    app_->Synchronise();
    EXPECT_EQ(app_->From(), std::nullopt);
    EXPECT_EQ(app_->To(), std::nullopt);
    EXPECT_EQ(Queries(), 1);
}

TEST_F(Filters, AFromBehindToIsRefusedAndNothingIsRead) {
    app_->list().Select(5);
    app_->Command(IDM_SET_AS_TO);
    ASSERT_TRUE(app_->WaitForRows(5));
    const int queries = Queries();
    ASSERT_TRUE(app_->SelectPath(kSystem));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForRows(5));
    app_->sources().SetChecked(0, true);
    ASSERT_TRUE(WaitUntil([&] { return Queries() > queries + 1; }));
    const int settled = Queries();
    ASSERT_TRUE(GiveFocus(app_->controls().fromPicker));
    ClickCheckBox(app_->controls().fromPicker);  // today, long after the recording
    EXPECT_TRUE(app_->WaitForStatus(L"Time range: From is after To"));
    EXPECT_EQ(Queries(), settled);
}

TEST_F(Filters, TickingFromTakesTodaysMidnightAndTickingToThePresentSecond) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    ClickCheckBox(app_->controls().fromPicker);
    ASSERT_TRUE(WaitUntil([&] { return app_->From().has_value(); }));
    app_->Synchronise();
    const SYSTEMTIME from = *app_->From();
    EXPECT_EQ(from.wDay, now.wDay);
    EXPECT_EQ(from.wMonth, now.wMonth);
    EXPECT_EQ(from.wYear, now.wYear);
    EXPECT_EQ(from.wHour + from.wMinute + from.wSecond, 0);
    EXPECT_TRUE(app_->WaitForRows(0)) << "nothing was recorded today";

    ClickCheckBox(app_->controls().toPicker);
    ASSERT_TRUE(WaitUntil([&] { return app_->To().has_value(); }));
    app_->Synchronise();
    const auto minuteOf = [](const SYSTEMTIME& time) { return time.wHour * 60 + time.wMinute; };
    EXPECT_LE(minuteOf(*app_->To()) - minuteOf(now), 1);
    EXPECT_EQ(app_->NodeName(), L"Application (time range)");

    ClickCheckBox(app_->controls().fromPicker);
    ClickCheckBox(app_->controls().toPicker);
    EXPECT_TRUE(app_->WaitForRows(10)) << "the whole log again";
    EXPECT_EQ(app_->From(), std::nullopt);
    EXPECT_EQ(app_->NodeName(), L"Application");
}

TEST_F(Filters, ATimeRangeAppliesToTheNextChannelToo) {
    app_->list().Select(0);
    app_->Command(IDM_SET_AS_FROM);
    ASSERT_TRUE(app_->WaitForRows(1));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_EQ(app_->NodeName(), L"System (time range)");
    EXPECT_TRUE(app_->WaitForRows(0));
}

}  // namespace
}  // namespace tavrin::test
