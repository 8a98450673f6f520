// Fails each service call of a user's story in turn. The window must keep answering, report every
// lost event, recover from a fault that happens once, and exit cleanly.
//
// TAVRIN_SWEEP_STEP=n runs every n-th case of each test, beginning with TAVRIN_SWEEP_FIRST. With
// 1 the whole sweep takes about 40 minutes. To run a failed case alone, give its number as the
// first, and a very large step.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"
#include "endurance/faults/faults.h"
#include "endurance/faults/story_driver.h"
#include "support/wait_until.h"
#include "window/harness/environment.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

constexpr unsigned kUsualStep = 59;

struct Story {
    const char* name;
    std::vector<Step> before;  // no call of these fails
    std::vector<Step> steps;
    WholeList list;        // when no call fails, and after a refresh
    bool isHasty = false;  // closes the window at once
};

void PrintTo(const Story& story, std::ostream* stream) {
    *stream << story.name;
}

using S = StoryDriver;

const Story kSelectEvent = {
    "SelectEvent",
    {&S::WaitForTree, &S::SelectSmallChannel},
    {&S::SelectNewestEvent, &S::SelectEventWithoutMessage, &S::SelectEventOfUnknownProvider},
    kSmallList};

const Story kStories[] = {
    {"SelectChannel", {&S::WaitForTree}, {&S::SelectSmallChannel}, kSmallList},
    kSelectEvent,
    {"FilterByTime",
     {&S::WaitForTree, &S::SelectSmallChannel, &S::SelectOldEvent},
     {&S::SetAsFrom},
     {151, 200, kOldId, 200}},
    // One of the hundred events with even numbers has another source.
    {"FilterBySource",
     {&S::WaitForTree, &S::SelectSmallChannel},
     {&S::TickSource},
     {99, 200, 2, 200}},
    {"FilterByText",
     {&S::WaitForTree, &S::Minimise, &S::SelectLargeChannel},
     {&S::TypeFilterText},
     {10400, 10400, 1, 10400}},
    {"ScrollToEnd",
     {&S::WaitForTree, &S::Minimise, &S::SelectLargeChannel},
     {&S::ScrollToEnd},
     {10400, 10400, 1, 10400}},
    {"RefreshForNewEvent",
     {&S::WaitForTree, &S::SelectSmallChannel, &S::MeetNewEvent},
     {&S::Refresh},
     {201, 201, 1, 201}},
    {"CloseAtOnce", {&S::WaitForTree}, {&S::SelectSmallChannel}, kSmallList, true},
};

// Closes the window. Expects the process to exit cleanly, with no handle open.
void ExpectCleanEnd(const AppWindow& app) {
    app.PostClose();
    EXPECT_TRUE(HasEndedCleanly(app));
}

// The window thread creates the render context of the details only once.
void ExpectDetails(StoryDriver& driver, const std::wstring& refused) {
    driver.SelectNewestEvent();
    EXPECT_TRUE(driver.app().Details() != L"" || refused == L"EvtCreateRenderContext");
}

// Expects a refresh to read everything, whichever call failed before.
void ExpectRecovery(StoryDriver& driver, const WholeList& list, const std::wstring& refused) {
    driver.Refresh();
    EXPECT_TRUE(WaitUntil([&] {
        driver.ScrollToEnd();
        return driver.Shows(list);
    })) << base::ToUtf8(driver.app().Loaded() + L" events, " + driver.app().Status());
    EXPECT_EQ(driver.app().Status(), L"");
    ExpectDetails(driver, refused);
}

// Faults that lose events without a message: 259 is the end of a query's results, and an event
// that cannot be rendered loses only itself.
bool LosesEventsByDesign(const Fault& fault) {
    return fault.function == L"EvtCreateRenderContext" ||
           (fault.function == L"EvtRender" && fault.code == ERROR_INSUFFICIENT_BUFFER) ||
           (fault.function == L"EvtNext" && fault.code == ERROR_NO_MORE_ITEMS);
}

void ExpectNoSilentLoss(StoryDriver& driver, const WholeList& list) {
    EXPECT_TRUE(WaitUntil([&] { return driver.HasLoaded(list) || driver.ShowsLoadFailure(); }))
        << base::ToUtf8(driver.app().Loaded() + L" events, " + driver.app().Status());
}

// What a run of a story without a fault shows.
struct Measured {
    Progress before;  // after the steps that precede the story
    std::vector<Fault> faults;
};

Measured Measure(const Story& story) {
    StoryDriver driver(L"");
    driver.Take(story.before);
    const Progress before = driver.WaitForRest();
    driver.Take(story.steps);
    const Progress after = driver.WaitForRest();
    EXPECT_TRUE(driver.Shows(story.list));
    ExpectRecovery(driver, story.list, L"");
    ExpectCleanEnd(driver.app());
    return {before, FaultsBetween(before.calls, after.calls)};
}

bool IsReached(const StoryDriver& driver, const Fault& fault) {
    return WaitUntil([&] { return driver.CurrentProgress().calls[fault.function] >= fault.call; });
}

void RunCase(const Story& story, const Progress& before, const Fault& fault) {
    StoryDriver driver(ScriptLine(fault));
    driver.Take(story.before);
    EXPECT_TRUE(WaitUntil([&] { return driver.CurrentProgress() == before; }));
    driver.Take(story.steps);
    if (!story.isHasty) {
        EXPECT_TRUE(IsReached(driver, fault));
        if (!LosesEventsByDesign(fault)) {
            ExpectNoSilentLoss(driver, story.list);
        }
        if (!fault.isForEver) {
            ExpectRecovery(driver, story.list, fault.function);
        }
    }
    ExpectCleanEnd(driver.app());
}

template <typename RunFault>
void Sweep(const std::vector<Fault>& faults, RunFault run) {
    ASSERT_FALSE(faults.empty());
    const std::size_t step = NumberFromEnvironment(L"TAVRIN_SWEEP_STEP", kUsualStep);
    unsigned runs = 0;
    for (std::size_t n = NumberFromEnvironment(L"TAVRIN_SWEEP_FIRST", 0); n < faults.size();
         n += step) {
        SCOPED_TRACE("case " + std::to_string(n) + ": " + base::ToUtf8(ScriptLine(faults[n])));
        try {
            run(faults[n]);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();  // reported here, inside the SCOPED_TRACE
        }
        ++runs;
    }
    std::printf("%u of %zu cases\n", runs, faults.size());
}

class FaultSweep : public testing::TestWithParam<Story> {};

TEST_P(FaultSweep, LosesNothingSilentlyAndRecovers) {
    const Story& story = GetParam();
    const Measured measured = Measure(story);
    ASSERT_FALSE(HasFailure());
    Sweep(measured.faults, [&](const Fault& fault) { RunCase(story, measured.before, fault); });
}

INSTANTIATE_TEST_SUITE_P(Stories, FaultSweep, testing::ValuesIn(kStories),
                         [](const auto& test) { return test.param.name; });

std::ptrdiff_t CountShown(TreeReader& tree, const std::vector<std::vector<std::wstring>>& paths) {
    return std::ranges::count_if(paths,
                                 [&](const auto& path) { return tree.Find(path) != nullptr; });
}

// Any other failing call may end the enumeration.
bool CostsOneChannel(const Fault& fault) {
    return fault.function == L"EvtOpenChannelConfig" ||
           fault.function == L"EvtGetChannelConfigProperty";
}

// The tree is not read again: a channel that it lacks cannot be selected.
TEST(TreeFaultSweep, KeepsTheFoldersAndTheOtherChannels) {
    CallCounts calls;
    {
        StoryDriver driver(L"");
        driver.Take({&S::WaitForTree});
        calls = driver.WaitForRest().calls;
        ExpectCleanEnd(driver.app());
    }
    Sweep(FaultsBetween({}, calls), [](const Fault& fault) {
        StoryDriver driver(ScriptLine(fault));
        driver.Take({&S::WaitForTree});
        TreeReader& tree = driver.app().tree();
        if (!fault.isForEver) {
            EXPECT_EQ(CountShown(tree, {kWindowsLogs, {kLargeChannel.front()}}), 2);
            EXPECT_GE(CountShown(tree, {kSmallChannel, kApplication, kLargeChannel}),
                      CostsOneChannel(fault) ? 2 : 0);
        }
        if (tree.Find(kSmallChannel) != nullptr) {
            driver.SelectSmallChannel();
            ExpectRecovery(driver, kSmallList, L"");
        }
        ExpectCleanEnd(driver.app());
    });
}

// Counts the handles in the ledger's lines: "open: Query #5 ...", or "open: 72 Event ..." for a
// page of events.
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

struct Closes {
    unsigned calls;
    unsigned leftOpen;
};

// Takes the steps of kSelectEvent, then closes the window.
Closes CountCloses(const Progress& before, const std::wstring& script) {
    StoryDriver driver(script);
    driver.Take(kSelectEvent.before);
    EXPECT_TRUE(WaitUntil([&] { return driver.CurrentProgress() == before; }));
    driver.Take(kSelectEvent.steps);
    const AppProcess& process = driver.app().process();
    driver.app().PostClose();
    const Ending ending = process.WaitForEnd(kPatience);
    EXPECT_TRUE(ending.ended);
    EXPECT_EQ(ending.exitCode, 0u);
    const std::string ledger = base::ToUtf8(process.Ledger());
    return {process.CallCounts()[L"EvtClose"], ledger == "clean\n" ? 0 : CountOpen(ledger)};
}

// A handle that the service does not close stays open; the program closes all others.
TEST(RefusedClose, CostsThatHandleAlone) {
    constexpr unsigned kStep = 23;
    const Progress before = Measure(kSelectEvent).before;
    const Closes all = CountCloses(before, L"");
    EXPECT_EQ(all.leftOpen, 0u);
    const auto refuse = [&](unsigned call, bool isForEver) {
        const Fault fault = {L"EvtClose", call, isForEver, ERROR_INVALID_HANDLE};
        const Closes closes = CountCloses(before, ScriptLine(fault));
        EXPECT_EQ(closes.calls, all.calls);
        return closes.leftOpen;
    };
    EXPECT_EQ(refuse(1, true), all.calls);
    for (unsigned call = 1; call <= all.calls; call += kStep) {
        SCOPED_TRACE(call);
        EXPECT_EQ(refuse(call, false), 1u);
    }
}

}  // namespace
}  // namespace tavrin::test
