#include <algorithm>

#include "support/wait_until.h"
#include "window/expected/expected_layout.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

class Layout : public WindowTest {};

struct ClientArea {
    int width;
    int height;
};

TEST_F(Layout, EveryControlLiesWhereItMustAtEverySize) {
    const ClientArea kAreas[] = {
        {1000, 700}, {1200, 900}, {640, 480}, {508, 400},  {420, 300},
        {320, 260},  {1000, 200}, {900, 150}, {1100, 760},
    };
    const AppWindow& app = Start();
    ExpectedSizes sizes;
    for (const ClientArea& area : kAreas) {
        // Each layout starts from the sizes that the one before stored.
        sizes = ExpectedLayout(app, sizes).sizes();
        ASSERT_TRUE(app.ResizeClient(area.width, area.height));
        const ExpectedLayout expected(app, sizes);
        expected.Expect(app);
        sizes = expected.sizes();
    }
}

TEST_F(Layout, TheListsColumnsAreResetByEveryLayout) {
    AppWindow& app = Start();
    for (const int width : {1000, 1250, 640}) {
        ASSERT_TRUE(app.ResizeClient(width, 600));
        SendMessageW(app.controls().list, LVM_SETCOLUMNWIDTH, 2, 33);
        ASSERT_TRUE(app.ResizeClient(width, 620));
        const int last = static_cast<short>(ClientSize(app.controls().list).cx - 600);
        const auto widths = [&] {
            std::vector<int> found;
            for (const ColumnFacts& column : app.list().Columns()) {
                found.push_back(column.width);
            }
            return found;
        };
        // The list may ignore a negative width and keep the last column as it was.
        std::vector<int> expected = {120, 140, 200, 140, 140, last};
        std::vector<int> found = widths();
        WaitUntil([&] { return (found = widths()) == expected; }, std::chrono::milliseconds(1000));
        if (last < 0) {
            expected.pop_back();
            found.pop_back();
        }
        EXPECT_EQ(found, expected) << "client width " << width;
    }
}

TEST_F(Layout, TheSourcesColumnIsAsWideAsItsListsClientArea) {
    AppWindow& app = Start();
    for (const int width : {1000, 500}) {
        ASSERT_TRUE(app.ResizeClient(width, 600));
        EXPECT_TRUE(WaitUntil([&] {
            return app.sources().Columns().at(0).width == ClientSize(app.controls().sourcesList).cx;
        })) << width;
    }
}

TEST_F(Layout, TheDetailsFillTheTabPageAndThePageFillsTheTab) {
    const AppWindow& app = Start();
    const MainWindowControls& controls = app.controls();
    for (const ClientArea& area : {ClientArea{1000, 700}, ClientArea{420, 260}}) {
        ASSERT_TRUE(app.ResizeClient(area.width, area.height));
        app.Synchronise();
        const SIZE frame = ClientSize(controls.detailsFrame);
        const RECT tab = RectIn(controls.detailsFrame, controls.tab);
        EXPECT_EQ(tab.left, 0);
        EXPECT_EQ(tab.top, 0);
        EXPECT_EQ(tab.right, frame.cx);
        EXPECT_EQ(tab.bottom, frame.cy);

        const RECT display = TabDisplayRect(app.process().handle(), controls.tab);
        const RECT page = RectIn(controls.tab, controls.tabPage);
        EXPECT_EQ(page.left, display.left);
        EXPECT_EQ(page.top, display.top);
        EXPECT_EQ(page.right, std::max(display.right, display.left));
        EXPECT_EQ(page.bottom, std::max(display.bottom, display.top));

        const SIZE room = ClientSize(controls.tabPage);
        const RECT edit = RectIn(controls.tabPage, controls.detailsEdit);
        EXPECT_EQ(edit.left, 6);
        EXPECT_EQ(edit.top, 6);
        EXPECT_EQ(edit.right - edit.left, std::max(room.cx - 12, 0L));
        EXPECT_EQ(edit.bottom - edit.top, std::max(room.cy - 12, 0L));
    }
}

TEST_F(Layout, TheBarsSpanTheWindow) {
    const AppWindow& app = Start();
    for (const int width : {1000, 600}) {
        ASSERT_TRUE(app.ResizeClient(width, 600));
        app.Synchronise();
        const RECT toolbar = RectIn(app.window(), app.controls().toolbar);
        const RECT status = RectIn(app.window(), app.controls().statusBar);
        EXPECT_EQ(toolbar.top, 0);
        EXPECT_GE(toolbar.right, width);
        EXPECT_EQ(status.bottom, 600);
        EXPECT_EQ(status.left, 0);
        EXPECT_EQ(status.right, width);
    }
}

TEST_F(Layout, TheSpareStaticIsNeverMoved) {
    const AppWindow& app = Start();
    const HWND spare = app.controls().spareStatic;
    for (const int width : {1000, 700}) {
        ASSERT_TRUE(app.ResizeClient(width, 600));
        app.Synchronise();
        const RECT rect = RectIn(app.window(), spare);
        EXPECT_EQ(rect.left, 254);
        EXPECT_EQ(rect.top, 0);
        EXPECT_EQ(rect.right - rect.left, 0);
        EXPECT_EQ(rect.bottom - rect.top, 30);
        EXPECT_EQ(TextOf(spare), L"");
    }
}

TEST_F(Layout, TheWindowCannotBeMadeNarrowerThan300Pixels) {
    const AppWindow& app = Start();
    MINMAXINFO limits{};
    limits.ptMinTrackSize = {1, 77};
    SendMessageW(app.window(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, 300);
    EXPECT_EQ(limits.ptMinTrackSize.y, 77) << "the program does not limit the height";

    SetWindowPos(app.window(), nullptr, 0, 0, 120, 400, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    app.Synchronise();
    RECT outer{};
    GetWindowRect(app.window(), &outer);
    EXPECT_GE(outer.right - outer.left, 300);
}

TEST_F(Layout, MinimisingAndRestoringKeepsThePanes) {
    const AppWindow& app = Start();
    ASSERT_TRUE(app.ResizeClient(1000, 700));
    const ExpectedLayout before(app, {});
    before.Expect(app);
    ShowWindow(app.window(), SW_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(app.window()) != FALSE; }));
    ShowWindow(app.window(), SW_RESTORE);
    ASSERT_TRUE(WaitUntil(
        [&] { return IsIconic(app.window()) == FALSE && ClientSize(app.window()).cx == 1000; }));
    before.Expect(app);
}

}  // namespace
}  // namespace tavrin::test
