#include <chrono>
#include <string>

#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/filters/filter_window_test.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// Measured by the tick count, a timer may expire a little early.
constexpr ULONGLONG kClockError = 30;

class TextFilter : public FilterWindowTest {};

TEST_F(TextFilter, ShowsTheRowsThatMatchIt) {
    Show();
    const struct {
        std::wstring text;
        int rows;
    } kTexts[] = {
        {L"error", 3},                                     // the level's name
        {L"acme-mail", 4},                                 // the provider's full name
        {LocalTimeText({2024, 3, 2, 5, 7, 3, 30, 0}), 1},  // the time
        {L"105", 1},                                       // the process id
        {L"A message", 0},                                 // messages are not searched
        {L"1000", 0},                                      // neither are event ids
        {L"\u00C9", 0},
        {L"", 10},
    };
    for (const auto& filter : kTexts) {
        app_->TypeFilter(filter.text);
        EXPECT_TRUE(app_->WaitForRows(filter.rows)) << filter.text;
        EXPECT_TRUE(WaitUntil([&] { return app_->Loaded() == std::to_wstring(filter.rows); }));
    }
    EXPECT_EQ(Queries().size(), 1u) << "the text filter needs no query";
}

TEST_F(TextFilter, IsAppliedAFifthOfASecondAfterTheLastKey) {
    Show();
    app_->TypeFilter(L"10");
    EXPECT_TRUE(HoldsFor(100ms, [&] { return app_->list().RowCount() == 10; }));
    const ULONGLONG beforeLast = GetTickCount64();
    TypeText(L"5");
    ASSERT_TRUE(app_->WaitForRows(1));
    EXPECT_GE(GetTickCount64() - beforeLast + kClockError, 200u);
}

TEST_F(TextFilter, AppliesToRecordsThatArriveLater) {
    const Gate gate;
    logs_.WriteEvents(L"Application", TenEvents());
    Begin(gate.Block(L"EvtRender"));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(gate.WaitForCall());
    app_->TypeFilter(L"beta");
    ASSERT_EQ(app_->list().RowCount(), 0);
    gate.Open();
    EXPECT_TRUE(app_->WaitForRows(3));
    EXPECT_EQ(app_->list().Cell(0, 2), L"Beta");
    EXPECT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 3; }))
        << "hidden records name their sources too";
}

// A load of the channel's 25,000 events pauses after about ten thousand.
TEST_F(TextFilter, LiftsTheLimitForAFilterReloadAndARefresh) {
    constexpr int kEvents = 25'000;
    constexpr int kPage = 10'112;
    Begin(L"log EvtOpenLog\nchannel name=Big type=Operational providers=2 events=" +
          std::to_wstring(kEvents) + L"\n");
    ASSERT_TRUE(app_->SelectPath({L"Applications and Service Logs", L"Big"}));
    ASSERT_TRUE(WaitUntil([&] { return app_->list().RowCount() >= 10'000; }));
    ASSERT_LT(app_->list().RowCount(), kEvents);
    const DebugOutput output;
    const DWORD process = app_->process().id();
    const std::wstring kFinished = L"Finished draining. Killing timer.";
    // Waits for the trace lines of a load's start and end.
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

}  // namespace
}  // namespace tavrin::test
