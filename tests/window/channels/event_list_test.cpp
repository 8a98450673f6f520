#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/controls/screen.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

class EventList : public WindowTest {};

TEST_F(EventList, ShowsEveryCellOfAnEventNewestFirst) {
    const Recording logs(kSomeChannels);
    const RecordedEvent older{.recordId = 18446744073709551614u,
                              .provider = L"Acme-Backup-Agent",
                              .eventId = 65535,
                              .level = 3,
                              .time = L"2023-12-31T23:59:58.9999999Z",
                              .processId = 4294967295u};
    const RecordedEvent newer{.recordId = 18446744073709551615u,
                              .provider = L"Service Control Manager",
                              .eventId = 0,
                              .level = 4,
                              .time = L"2024-03-05T07:09:03.0000000Z",
                              .processId = 0};
    logs.WriteEvents(L"Application", {older, newer});
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(2));
    const std::wstring newerTime = LocalTimeText({2024, 3, 2, 5, 7, 9, 3, 0});
    const std::wstring olderTime = LocalTimeText({2023, 12, 0, 31, 23, 59, 58, 999});
    EXPECT_EQ(app.list().Row(0), (RowCells{L"Information", newerTime, L"Service Control Manager",
                                           L"0", L"0", L"18446744073709551615"}));
    EXPECT_EQ(app.list().Row(1), (RowCells{L"Warning", olderTime, L"Agent", L"65535", L"4294967295",
                                           L"18446744073709551614"}));
}

TEST_F(EventList, OnlyErrorsHaveALightRedBackground) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", {{.recordId = 1, .level = 1},
                                      {.recordId = 2, .level = 2},
                                      {.recordId = 3, .level = 3},
                                      {.recordId = 4, .level = 4}});
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(4));
    ASSERT_TRUE(BringToFront(app.window()));
    MoveMouse(CentreOf(app.controls().detailsFrame));
    constexpr COLORREF kLightRed = 0xDCDCFF;
    const auto isRed = [&](int row) {
        // The part of the Level cell that is always visible.
        RECT cell = app.list().RowRect(row, LVIR_BOUNDS);
        cell.right = cell.left + 110;
        return ShowsColour(cell, kLightRed);
    };
    EXPECT_TRUE(WaitUntil([&] { return isRed(2); })) << "the error's row";
    for (const int row : {0, 1, 3}) {
        EXPECT_FALSE(isRed(row)) << row;
    }
}

TEST_F(EventList, TheHeaderShowsBothCountsInTheUsersFormat) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(1234));
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(1234));
    EXPECT_TRUE(WaitUntil([&] { return app.Loaded() == FormatCount(1234); }));
    EXPECT_TRUE(WaitUntil([&] { return app.Total() == FormatCount(1234); }));
    EXPECT_EQ(app.TotalCaption(), L" Total: ");
    EXPECT_EQ(app.NodeName(), L"Application");
    EXPECT_EQ(app.Status(), L"");
}

TEST_F(EventList, SeveralRowsCanBeSelectedTogether) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(5));
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(5));
    ASSERT_TRUE(BringToFront(app.window()));
    ASSERT_TRUE(GiveFocus(app.controls().list));
    app.list().Select(0);
    PressWith(VK_SHIFT, VK_DOWN);
    PressWith(VK_SHIFT, VK_DOWN);
    EXPECT_TRUE(WaitUntil(
        [&] { return SendMessageW(app.controls().list, LVM_GETSELECTEDCOUNT, 0, 0) == 3; }));
}

TEST_F(EventList, SelectingTheChannelAgainShowsItsRecordsWithoutReadingTheLog) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(300));
    AppOptions options = Serving(logs);
    options.recordCalls = true;
    AppWindow& app = Start(options);
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(300));
    ASSERT_TRUE(app.SelectPath(kSystem));
    ASSERT_TRUE(app.WaitForRows(0));
    EXPECT_EQ(app.process().CallCounts()[L"EvtQuery"], 2u);
    app.TypeFilter(L"nothing has this");
    ASSERT_TRUE(app.SelectPath(kApplication));
    EXPECT_TRUE(app.WaitForRows(300));
    EXPECT_EQ(app.process().CallCounts()[L"EvtQuery"], 2u);
    EXPECT_EQ(app.FilterText(), L"") << "a selection clears the filter's text";
}

TEST_F(EventList, AFolderKeepsTheListAndEmptiesTheSources) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(7));
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(7));
    ASSERT_TRUE(WaitUntil([&] { return app.sources().RowCount() > 0; }));
    EXPECT_TRUE(IsWindowEnabled(app.controls().sourcesList));
    ASSERT_TRUE(app.SelectPath(kWindowsLogs));
    EXPECT_EQ(app.NodeName(), L"Windows Logs");
    EXPECT_EQ(app.list().RowCount(), 7);
    EXPECT_EQ(app.sources().RowCount(), 0);
    EXPECT_EQ(TextOf(app.controls().sourcesCaption), L"Sources");
    for (const HWND control : {app.controls().sourcesSearch, app.controls().sourcesList,
                               app.controls().showAllSources}) {
        EXPECT_FALSE(IsWindowEnabled(control));
    }
}

}  // namespace
}  // namespace tavrin::test
