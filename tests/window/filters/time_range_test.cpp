#include <algorithm>
#include <chrono>
#include <string>

#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_expectations.h"
#include "window/filters/filter_window_test.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr SYSTEMTIME kTen{2024, 3, 0, 5, 10, 0, 0, 0};
constexpr SYSTEMTIME kSecondPastTen{2024, 3, 0, 5, 10, 0, 1, 0};
constexpr SYSTEMTIME kEleven{2024, 3, 0, 5, 11, 0, 0, 0};

// Measured by the tick count, a timer may expire a little early.
constexpr ULONGLONG kClockError = 30;

LocalTime Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return LocalTimeOf(now);
}

class TimeRange : public FilterWindowTest {
protected:
    // Sets both pickers and applies the range.
    void SetRange(const SYSTEMTIME& from, const SYSTEMTIME& to) const {
        Tick(ToPicker());
        Type(ToPicker(), to);
        Tick(FromPicker());
        Type(FromPicker(), from);
        app_->Expire(Timer::FilterApply);
    }
};

TEST_F(TimeRange, FromAndToMayBeTheSameSecond) {
    Show();
    SetRange(kTen, kTen);
    EXPECT_TRUE(app_->WaitForRows(0));
    EXPECT_EQ(app_->Status(), L"");
    EXPECT_EQ(app_->NodeName(), L"Application (time range)");
}

TEST_F(TimeRange, FromASecondAfterToIsRejectedAndTheOldRangeStays) {
    Show();
    SetRange(kTen, kTen);
    ASSERT_TRUE(app_->WaitForRows(0));
    const std::size_t loads = Queries().size();
    Type(FromPicker(), kSecondPastTen);
    EXPECT_TRUE(app_->WaitForStatus(kRangeError));
    EXPECT_EQ(Queries().size(), loads);
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(WaitUntil([&] {
        const auto queries = driver_->Queries(L"System");
        const auto former = Queries().back();
        return queries.size() == 1 && queries[0].substr(queries[0].find(L"TimeCreated")) ==
                                          former.substr(former.find(L"TimeCreated"));
    })) << "the next channel's query has the old range";
}

TEST_F(TimeRange, TheRangeErrorStaysUntilAnotherRangeIsApplied) {
    Show();
    SetRange(kTen, kTen);
    Type(FromPicker(), kSecondPastTen);
    ASSERT_TRUE(app_->WaitForStatus(kRangeError));
    Type(FromPicker(), kTen);
    app_->Expire(Timer::FilterApply);
    EXPECT_EQ(app_->Status(), kRangeError) << "the applied range has not changed";
    Type(ToPicker(), kEleven);
    EXPECT_TRUE(app_->WaitForStatus(L""));
}

TEST_F(TimeRange, TickingFromSetsTodaysMidnightAndTickingToSetsTheCurrentSecond) {
    Show();
    const LocalTime before = Now();
    Tick(FromPicker());
    Tick(ToPicker());
    app_->Synchronise();
    const LocalTime from = LocalTimeOf(*app_->From());
    const LocalTime to = LocalTimeOf(*app_->To());
    const LocalTime after = Now();
    using std::chrono::days;
    EXPECT_GE(from, std::chrono::floor<days>(before));
    EXPECT_LE(from, std::chrono::floor<days>(after));
    EXPECT_EQ(from, std::chrono::floor<days>(from));
    EXPECT_GE(to, before);
    EXPECT_LE(to, after);
    EXPECT_TRUE(app_->WaitForRows(0)) << "nothing was recorded today";
    EXPECT_EQ(app_->NodeName(), L"Application (time range)");

    Untick(FromPicker());
    Untick(ToPicker());
    EXPECT_TRUE(app_->WaitForRows(10)) << "the whole log is shown again";
    EXPECT_EQ(app_->NodeName(), L"Application");
}

TEST_F(TimeRange, APickerTickedAgainStartsAtTodayAgain) {
    Show();
    Tick(FromPicker());
    const SYSTEMTIME today = *app_->From();
    Type(FromPicker(), kTen);
    Untick(FromPicker());
    Tick(FromPicker());
    app_->Synchronise();
    EXPECT_EQ(LocalTimeOf(*app_->From()), LocalTimeOf(today));
}

TEST_F(TimeRange, EveryPickerChangePostponesTheReload) {
    Show();
    Tick(ToPicker());
    Type(ToPicker(), kTen);
    const ULONGLONG beforeLast = GetTickCount64();
    Type(ToPicker(), kEleven);
    const UtcTime eleven(LocalTimeOf(kEleven).time_since_epoch());
    const std::wstring asked =
        ExpectedQuery(L"Application", {.until = eleven - OffsetsOfThisZone(eleven).chosen + 1s});
    ASSERT_TRUE(WaitUntil([&] { return Queries().back() == asked; }));
    EXPECT_GE(GetTickCount64() - beforeLast + kClockError, 500u);
}

TEST_F(TimeRange, SetAsFromAndToTakeTheSelectedRowsTime) {
    Show();
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
    EXPECT_TRUE(app_->WaitForRows(3)) << "the chosen second is part of the range";
    EXPECT_EQ(app_->list().Cell(0, 5), L"9");
    EXPECT_EQ(app_->list().Cell(2, 5), L"7");
    EXPECT_EQ(app_->TotalCaption(), L" In log: ");
}

TEST_F(TimeRange, F5RefreshesRightAfterAPickersCheckBoxWasClicked) {
    Show();
    Tick(ToPicker());
    app_->Expire(Timer::FilterApply);
    ASSERT_TRUE(WaitUntil([&] { return Queries().size() == 2; }));
    PressKey(VK_F5);
    EXPECT_TRUE(WaitUntil([&] { return Queries().size() == 3; }));
}

}  // namespace
}  // namespace tavrin::test
