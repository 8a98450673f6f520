#include <string>
#include <vector>

#include "support/log_key.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

using Names = std::vector<std::wstring>;

class Sources : public FilterWindowTest {};

TEST_F(Sources, TickingOneLoadsOnlyItsEvents) {
    Show();
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{L"Acme-Mail", L"Beta", L"MsiInstaller"}));
    EXPECT_EQ(SourcesCaption(), L"Sources (all)");
    driver_->ClickSource(1);
    EXPECT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{L"Beta", L"Acme-Mail", L"MsiInstaller"}))
        << "ticked names come first";
    EXPECT_TRUE(app_->sources().IsChecked(0));
    EXPECT_EQ(SourcesCaption(), L"Sources (1 selected)");
    EXPECT_EQ(app_->NodeName(), L"Application (1 source)");
    EXPECT_EQ(app_->TotalCaption(), L" In log: ");
    EXPECT_EQ(app_->Total(), L"10") << "the count covers the whole log";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(app_->list().Cell(i, 2), L"Beta");
    }
}

TEST_F(Sources, TickedInQuickSuccessionReadTheChannelOnce) {
    Show();
    for (int row = 0; row < 3; ++row) {
        app_->sources().SetChecked(row, true);
    }
    EXPECT_EQ(SourcesCaption(), L"Sources (3 selected)");
    EXPECT_EQ(app_->NodeName(), L"Application (3 sources)");
    EXPECT_TRUE(WaitUntil([&] { return Queries().size() == 2; }));
    EXPECT_TRUE(HoldsFor(700ms, [&] { return Queries().size() == 2; }));
    EXPECT_EQ(app_->list().RowCount(), 10);
}

TEST_F(Sources, ShowAllUnticksThemAndReadsTheWholeChannel) {
    Show();
    app_->sources().SetChecked(2, true);
    ASSERT_TRUE(app_->WaitForRows(3));
    driver_->ClickShowAll();
    EXPECT_TRUE(app_->WaitForRows(10));
    EXPECT_EQ(SourcesCaption(), L"Sources (all)");
    EXPECT_EQ(app_->NodeName(), L"Application");
    EXPECT_EQ(app_->TotalCaption(), L" Total: ");
    for (int row = 0; row < 3; ++row) {
        EXPECT_FALSE(app_->sources().IsChecked(row));
    }
}

TEST_F(Sources, ATickLeavesTheRowInPlaceWithoutAReload) {
    Show();
    // An invalid range prevents the reload.
    Tick(ToPicker());
    Type(ToPicker(), {2024, 3, 0, 5, 10, 0, 0, 0});
    Tick(FromPicker());
    ASSERT_TRUE(app_->WaitForStatus(kRangeError));
    driver_->ClickSource(2);
    ASSERT_TRUE(WaitUntil([&] { return SourcesCaption() == L"Sources (1 selected)"; }));
    app_->Expire(Timer::FilterApply);
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{L"Acme-Mail", L"Beta", L"MsiInstaller"}));
    EXPECT_TRUE(app_->sources().IsChecked(2));
}

TEST_F(Sources, OfNewEventsJoinTheListWithoutChangingTheTicks) {
    Show();
    driver_->ClickSource(1);
    ASSERT_TRUE(app_->WaitForRows(3));
    logs_.AppendEvent(L"Application", {.recordId = 11, .provider = L"Aardvark"});
    driver_->ClickSource(0);
    ASSERT_TRUE(app_->WaitForRows(11));
    EXPECT_TRUE(WaitUntil([&] {
        return app_->sources().FirstColumn() ==
               Names{L"Aardvark", L"Acme-Mail", L"Beta", L"MsiInstaller"};
    }));
    driver_->ClickSource(2);
    ASSERT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->sources().FirstColumn(),
              (Names{L"Beta", L"Aardvark", L"Acme-Mail", L"MsiInstaller"}))
        << "names without a loaded event stay";
    EXPECT_TRUE(app_->sources().IsChecked(0));
}

// The program reads 255 characters of the search text.
TEST_F(Sources, OfTheRegistryMayHave255CharactersAndMatchALongerSearchText) {
    const std::wstring longest(255, L'x');
    const LogKey key({longest, L"y"});
    if (!key.IsThere()) {
        GTEST_SKIP() << "needs the right to write to the event log's registry key";
    }
    Begin(L"channel name=\"" + kTestLog + L"\" type=Operational\n");
    ASSERT_TRUE(app_->SelectPath({L"Applications and Service Logs", kTestLog}));
    EXPECT_EQ(app_->sources().FirstColumn(), (Names{longest, L"y"}));
    SendMessageW(app_->controls().sourcesSearch, WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>((longest + L"z").c_str()));
    EXPECT_TRUE(WaitUntil([&] { return app_->sources().FirstColumn() == Names{longest}; }));
}

}  // namespace
}  // namespace tavrin::test
