#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>

#include "smoke/picture.h"
#include "support/wait_until.h"
#include "window/harness/app_window.h"
#include "window/harness/deadline.h"
#include "window/harness/environment.h"

namespace {

using namespace std::chrono_literals;
using namespace tavrin::test;

// The logs of a real computer are long, and its first message texts come from disk.
constexpr auto kLong = 60s;

// The program fetches the text before it answers the selection.
constexpr auto kShort = 1s;

constexpr int kTimeColumn = 1;

class Smoke : public testing::Test {
protected:
    static AppOptions Options() {
        AppOptions options;
        options.program = PathFromEnvironment(L"TAVRIN_SMOKE_PROGRAM");
        return options;
    }

    void SetFilter(const std::wstring& text) const {
        SendMessageW(app_.controls().filterEdit, WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(text.c_str()));
    }

    int Rows() { return app_.list().RowCount(); }

    // Selects the newest events in turn until one has a text; Windows cannot format each.
    bool SelectAnEventWithDetails() {
        for (int row = 0; row < std::min(Rows(), 20); ++row) {
            app_.list().Select(row);
            if (WaitUntil([&] { return !app_.Details().empty(); }, kShort)) {
                return true;
            }
        }
        return false;
    }

    AppWindow app_{Options()};
    Deadline deadline_{app_.process().handle(), 4min};
};

TEST_F(Smoke, TheProgramShowsAndFiltersTheSystemLogAndExits) {
    ASSERT_TRUE(WaitUntil([&] { return app_.tree().ItemCount() > 0; }, kLong)) << "no tree";
    ASSERT_TRUE(app_.SelectPath({L"Windows Logs", L"System"})) << "no System log";

    ASSERT_TRUE(WaitUntil([&] { return Rows() > 0; }, kLong)) << "no rows";
    ASSERT_TRUE(SelectAnEventWithDetails()) << "no details";

    // Leaves only the events of one second.
    const int all = Rows();
    const std::wstring time = app_.list().Cell(0, kTimeColumn);
    SetFilter(time);
    ASSERT_TRUE(WaitUntil([&] { return Rows() > 0 && Rows() < all; }, kLong)) << "not filtered";
    EXPECT_EQ(app_.list().Cell(0, kTimeColumn), time);
    SetFilter(L"");
    ASSERT_TRUE(WaitUntil([&] { return Rows() >= all; }, kLong)) << "still filtered";

    EXPECT_TRUE(SavePicture(app_.window(), PathFromEnvironment(L"TAVRIN_SMOKE_PICTURE")));

    // A reload clears the details.
    PostMessageW(app_.controls().list, WM_KEYDOWN, VK_F5, 0);
    ASSERT_TRUE(WaitUntil([&] { return app_.Details().empty() && Rows() > 0; }, kLong))
        << "not reloaded";

    std::printf("%d rows, %d tree items, %ls\n", Rows(), app_.tree().ItemCount(), time.c_str());
    app_.PostClose();
    const Ending ending = app_.process().WaitForEnd(kLong);
    ASSERT_TRUE(ending.ended);
    EXPECT_EQ(ending.exitCode, DWORD{0});
}

}  // namespace
