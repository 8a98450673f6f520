// Makes every service call of each user story fail in turn, once and for ever, with every code that
// the service is known to return. The window must show what could be read, and the program must end
// cleanly: no crash, no hang, no open handle.
//
// --gtest_filter runs a failed case alone. The whole sweep takes about an hour; GTEST_TOTAL_SHARDS
// and GTEST_SHARD_INDEX run every n-th case.

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"
#include "endurance/faults/expected_window.h"
#include "endurance/faults/stories.h"
#include "endurance/faults/story_channels.h"
#include "endurance/faults/story_driver.h"
#include "endurance/faults/sweep_cases.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

constexpr int kRecordIdColumn = 5;

using SharedRecording = std::shared_ptr<const FaultRecording>;

SharedRecording NewRecording(Content content) {
    return std::make_shared<FaultRecording>(content);
}

// Stories that do not change their recording share it.
SharedRecording RecordingFor(const Story& story) {
    if (story.Has(Action::EventArrives)) {
        return NewRecording(Content::Small);
    }
    if (story.Has(Action::SelectLargeChannel)) {
        static const SharedRecording whole = NewRecording(Content::Whole);
        return whole;
    }
    static const SharedRecording recording = NewRecording(Content::Small);
    return recording;
}

// Compares all cells of every 37th row and the record ids of the last 300: reading every cell of a
// long list takes too long.
void ExpectRows(ListReader& list, const std::vector<const RecordedEvent*>& expected) {
    constexpr std::size_t kLast = 300;
    constexpr std::size_t kWhole = 37;
    const std::size_t count = expected.size();
    ASSERT_EQ(list.RowCount(), static_cast<int>(count));
    for (std::size_t index = 0; index < count; ++index) {
        const int row = static_cast<int>(index);
        if (index % kWhole == 0 || index + 1 == count) {
            ASSERT_EQ(list.Row(row), CellsOf(*expected[index])) << "row " << row;
        } else if (index + kLast >= count) {
            ASSERT_EQ(list.Cell(row, kRecordIdColumn), std::to_wstring(expected[index]->recordId))
                << "row " << row;
        }
    }
}

// Waits until the window shows the texts and the program has made its calls. A window that shows
// the texts may still be working, so the texts are checked again after the calls.
void ExpectTexts(StoryDriver& driver, const ExpectedWindow& expected) {
    const WindowTexts texts = expected.Texts();
    const auto showsThem = [&] { return driver.Texts() == texts; };
    const auto hasMadeItsCalls = [&] { return driver.Calls() == expected.calls(); };
    const bool isSettled =
        WaitUntil(showsThem) && WaitUntil(hasMadeItsCalls) && WaitUntil(showsThem);
    ASSERT_EQ(driver.Texts(), texts);
    ASSERT_EQ(driver.Calls(), expected.calls());
    ASSERT_TRUE(isSettled);
}

// Ends the program. Returns the service's report on handles that were left open or misused.
std::string EndAndReadLedger(const AppWindow& app) {
    app.PostClose();
    const Ending ending = app.process().WaitForEnd(kPatience);
    EXPECT_TRUE(ending.ended);
    EXPECT_EQ(ending.exitCode, 0u);
    return base::ToUtf8(app.process().Ledger());
}

// Stops at the first step after which the window differs.
void TakeSteps(const std::vector<Step>& steps, StoryDriver& driver, ExpectedWindow& expected) {
    for (const Step& step : steps) {
        if (testing::Test::HasFatalFailure()) {
            return;
        }
        expected.Take(step);
        driver.Take(step);
        ExpectTexts(driver, expected);
    }
}

// Takes a whole story. Also compares the tree and the rows after the steps in which a call fails.
void TakeStory(const Story& story, StoryDriver& driver, ExpectedWindow& expected) {
    TakeSteps(story.before, driver, expected);
    TakeSteps(story.steps, driver, expected);
    EXPECT_EQ(driver.Tree(), expected.tree());
    ExpectRows(driver.app().list(), expected.rows());
    TakeSteps(story.after, driver, expected);
}

class FaultSweep : public testing::TestWithParam<SweepCase> {};

TEST_P(FaultSweep, ShowsWhatCouldBeReadAndEndsCleanly) {
    const auto& [story, fault] = GetParam();
    const SharedRecording recording = RecordingFor(*story);
    ExpectedWindow expected(fault);
    StoryDriver driver(*recording, *story, fault);
    if (story->isHasty) {
        TakeSteps(story->before, driver, expected);
        driver.Take(story->steps.front());
    } else {
        TakeStory(*story, driver, expected);
    }
    EXPECT_EQ(EndAndReadLedger(driver.app()), "clean\n");
}

// Counts the handles of lines such as "open: Query #5 ..." and, for a page, "open: 72 Event ...".
unsigned CountOpen(const std::string& ledger) {
    std::istringstream lines(ledger);
    unsigned count = 0;
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(line.starts_with("open: ")) << line;
        unsigned events = 0;
        std::istringstream number(line.substr(std::string_view("open: ").size()));
        count += number >> events ? events : 1;
    }
    return count;
}

// A run without faults counts the calls of EvtClose.
TEST(RefusedClose, LeaksOnlyThatHandle) {
    constexpr unsigned kStep = 23;
    const Story& story = StoryNamed("SelectEvent");
    const SharedRecording recording = RecordingFor(story);
    unsigned closes = 0;
    const auto run = [&](const std::optional<Fault>& fault) {
        ExpectedWindow expected({});
        StoryDriver driver(*recording, story, fault);
        TakeStory(story, driver, expected);
        const std::string ledger = EndAndReadLedger(driver.app());
        closes = driver.app().process().CallCounts()[L"EvtClose"];
        return ledger == "clean\n" ? 0 : CountOpen(ledger);
    };
    EXPECT_EQ(run({}), 0u);
    const unsigned all = closes;
    EXPECT_EQ(run(Fault{L"EvtClose", 1, Repetition::ForEver, ERROR_INVALID_HANDLE}), all);
    for (unsigned call = 1; call <= all; call += kStep) {
        SCOPED_TRACE(call);
        EXPECT_EQ(run(Fault{L"EvtClose", call, Repetition::Once, ERROR_INVALID_HANDLE}), 1u);
        EXPECT_EQ(closes, all);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, FaultSweep, testing::ValuesIn(EveryCase()),
                         [](const auto& sweep) { return NameOf(sweep.param); });

}  // namespace
}  // namespace tavrin::test
