#include <algorithm>
#include <utility>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/expected/expected_layout.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

constexpr int kWidth = 900;
constexpr int kHeight = 600;

// A window of a known size, with room on the screen for drags beyond its left and top edges.
class Splitters : public WindowTest {
protected:
    void SetUp() override {
        const AppWindow& app = Start();
        SetWindowPos(app.window(), nullptr, 200, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ASSERT_TRUE(app.ResizeClient(kWidth, kHeight));
        ASSERT_TRUE(BringToFront(app.window()));
        toolbar_ = Height(app.controls().toolbar);
        status_ = Height(app.controls().statusBar);
    }

    static int Height(HWND window) {
        RECT rect{};
        GetWindowRect(window, &rect);
        return rect.bottom - rect.top;
    }

    POINT OnScreen(POINT client) const {
        ClientToScreen(app_->window(), &client);
        return client;
    }

    void Drag(POINT from, POINT to) const { DragLeft(OnScreen(from), OnScreen(to)); }

    HWND Captured() const { return CaptureOf(app_->window()); }

    void ExpectSizes(const ExpectedSizes& sizes) const {
        ExpectedLayout(*app_, sizes).Expect(*app_);
    }

    POINT OnLeft() const { return {252, 300}; }
    POINT OnRight() const { return {kWidth - 252, 300}; }
    POINT OnBottom() const { return {kWidth / 2, BottomEdge() - 2}; }
    int BottomEdge() const { return kHeight - status_ - 150; }

    int toolbar_ = 0;
    int status_ = 0;
};

TEST_F(Splitters, DraggingTheLeftOneSetsTheTreesWidthWithinItsLimits) {
    const struct {
        int to;
        int width;
    } kDrags[] = {{330, 330}, {20, 100}, {-150, 100}, {2000, kWidth - 250 - 100}, {250, 250}};
    int edge = 250;
    for (const auto& drag : kDrags) {
        Drag({edge + 2, 300}, {std::min(drag.to, kWidth + 100), 300});
        ExpectSizes({.tree = drag.width});
        edge = drag.width;
    }
}

TEST_F(Splitters, DraggingTheRightOneSetsTheSourcesWidthWithinItsLimits) {
    const struct {
        int to;
        int width;
    } kDrags[] = {{kWidth - 320, 320},
                  {kWidth - 20, 100},
                  {kWidth + 90, 100},
                  {-120, kWidth - 250 - 100},
                  {kWidth - 250, 250}};
    int edge = kWidth - 250;
    for (const auto& drag : kDrags) {
        Drag({edge - 2, 300}, {drag.to, 300});
        ExpectSizes({.sources = drag.width});
        edge = kWidth - drag.width;
    }
}

TEST_F(Splitters, DraggingTheBottomOneSetsTheDetailsHeightWithinItsLimits) {
    const int tallest = kHeight - status_ - toolbar_ - 80;
    const struct {
        int to;
        int height;
    } kDrags[] = {{kHeight - status_ - 220, 220},
                  {kHeight - 10, 80},
                  {kHeight + 40, 80},
                  {-100, tallest},
                  {kHeight - status_ - 150, 150}};
    int edge = BottomEdge();
    for (const auto& drag : kDrags) {
        Drag({kWidth / 2, edge - 2}, {kWidth / 2, drag.to});
        ExpectSizes({.details = drag.height});
        edge = kHeight - status_ - drag.height;
    }
}

// A dialog or Alt+Tab sends WM_CANCELMODE. The last drag shows that the moves before it have been
// handled.
TEST_F(Splitters, ADragEndsWhenTheMouseCaptureIsLost) {
    MoveMouse(OnScreen(OnLeft()));
    PressLeftButton();
    MoveMouse(OnScreen({300, 300}));
    ExpectSizes({.tree = 300});
    SendMessageW(app_->window(), WM_CANCELMODE, 0, 0);
    MoveMouse(OnScreen({400, 300}));
    ReleaseLeftButton();
    MoveMouse(OnScreen({303, 300}));

    Drag(OnBottom(), {kWidth / 2, kHeight - status_ - 200});
    ExpectSizes({.details = 200, .tree = 300});
}

TEST_F(Splitters, TheLayoutFollowsWhileTheButtonIsStillDown) {
    MoveMouse(OnScreen(OnLeft()));
    PressLeftButton();
    MoveMouse(OnScreen({300, 300}));
    ExpectSizes({.tree = 300});
    MoveMouse(OnScreen({200, 300}));
    ExpectSizes({.tree = 200});
    ReleaseLeftButton();
    ASSERT_TRUE(WaitUntil([&] { return Captured() == nullptr; }));
    MoveMouse(OnScreen({400, 350}));
    app_->Synchronise();
    ExpectSizes({.tree = 200});
}

TEST_F(Splitters, APressBesideASplitterDragsNothing) {
    const POINT kPoints[] = {{249, 300},
                             {255, 300},
                             {kWidth - 255, 300},
                             {kWidth - 249, 300},
                             {450, BottomEdge() - 5},
                             {450, BottomEdge() + 1}};
    for (const POINT& point : kPoints) {
        const auto send = [&](UINT message, int offset) {
            SendMessageW(app_->window(), message, MK_LBUTTON,
                         MAKELPARAM(point.x + offset, point.y + offset));
        };
        send(WM_LBUTTONDOWN, 0);
        EXPECT_EQ(Captured(), nullptr) << point.x << ", " << point.y;
        send(WM_MOUSEMOVE, 60);
        send(WM_LBUTTONUP, 60);
        ExpectSizes({});
    }
}

// Compares cursor handles: the system uses one object for each shape.
TEST_F(Splitters, TheCursorShowsWhatCanBeDragged) {
    const auto shapeAt = [&](POINT client) {
        HCURSOR before = nullptr;
        MoveMouse(OnScreen(client));
        CURSORINFO information{};
        information.cbSize = sizeof(information);
        // The cursor has settled when two reads, with a message to the window in between, agree.
        WaitUntil([&] {
            app_->Synchronise();
            GetCursorInfo(&information);
            return std::exchange(before, information.hCursor) == information.hCursor;
        });
        return information.hCursor;
    };
    const HCURSOR left = shapeAt(OnLeft());
    const HCURSOR right = shapeAt(OnRight());
    const HCURSOR bottom = shapeAt(OnBottom());
    const HCURSOR header = shapeAt({kWidth / 2, toolbar_ + 16});
    EXPECT_EQ(left, right);
    EXPECT_NE(left, bottom);
    EXPECT_NE(left, header);
    EXPECT_NE(bottom, header);
    EXPECT_EQ(shapeAt({252, BottomEdge() - 2}), left) << "the left splitter takes precedence";
}

}  // namespace
}  // namespace tavrin::test
