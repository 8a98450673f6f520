#include <chrono>
#include <cstddef>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_window_test.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {
namespace {

// A filtered query takes far longer to skip an event than a test waits. The window must react to
// the user without waiting for the read.
class SlowReads : public FilterWindowTest {
protected:
    static constexpr wchar_t kFuture[] = L"2099-03-05T07:09:03.0000000Z";

    void SetUp() override {
        logs_.WriteEvents(L"Application", TenEvents());
        logs_.WriteEvents(L"System", {{.time = kFuture}});
        Begin(L"scan skip-us=100000000 channel=Application");
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(10));
        ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 3; }));
        // A newly ticked picker shows today, and the channel has no event of today: nothing
        // matches.
        Tick(FromPicker());
        ExpectQueries(2);
        ASSERT_TRUE(app_->WaitForRows(0));
    }

    void ExpectQueries(std::size_t count) {
        EXPECT_TRUE(WaitUntil([&] { return Queries().size() == count; }));
    }
};

TEST_F(SlowReads, F5ReadsAgain) {
    GiveFocus(app_->controls().list);
    PressKey(VK_F5);
    ExpectQueries(3);
}

TEST_F(SlowReads, AChangedRangeShowsItsRows) {
    Untick(FromPicker());
    EXPECT_TRUE(app_->WaitForRows(10));
}

TEST_F(SlowReads, ATickedSourceStartsItsQuery) {
    driver_->ClickSource(0);
    ExpectQueries(3);
}

TEST_F(SlowReads, ShowAllSourcesShowsEveryRow) {
    driver_->ClickSource(0);
    ExpectQueries(3);
    Untick(FromPicker());
    ExpectQueries(4);
    driver_->ClickShowAll();
    EXPECT_TRUE(app_->WaitForRows(10));
}

TEST_F(SlowReads, AnotherChannelShowsItsRows) {
    EXPECT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(app_->WaitForRows(1));
}

TEST_F(SlowReads, ClosingEndsTheProgram) {
    EXPECT_TRUE(ClosesCleanly(*app_, std::chrono::seconds(1)));
}

}  // namespace
}  // namespace tavrin::test
