#include "ui/actions/drain.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>
#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "eventlog/loading/load_protocol.h"
#include "query/filter_state.h"
#include "support/import_patch.h"
#include "support/test_record.h"
#include "support/trace_capture.h"
#include "ui/controls/window_state.h"
#include "recording_control.h"

#include "recording_control.h"

namespace tavrin::ui {
namespace {

using eventlog::EventNode;
using Lines = std::vector<std::wstring>;

const std::wstring kSwitched = L"User switched channels. Killing timer.";
const std::wstring kFinished = L"Finished draining. Killing timer.";

// A window without controls: messages to them have no effect.
class DrainTest : public testing::Test {
protected:
    DrainTest() {
        window_.currentNode = node_;
        window_.drainNode = node_.get();
        window_.draining = true;
    }
    ~DrainTest() override { query::g_sourceFilterTable.clear(); }

    void Load(const wchar_t* provider, const wchar_t* source) {
        eventlog::AppendPage(*node_, {test::MakeRecord({.provider = provider, .source = source})});
    }

    bool IsDraining() const { return window_.draining && window_.drainNode == node_.get(); }

    bool HasStopped() const { return !window_.draining && window_.drainNode == nullptr; }

    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006u);
    MainWindow window_{nullptr};
    test::TraceCapture trace_;
};

TEST_F(DrainTest, StartsOnceAndThenOnlyChangesItsNode) {
    window_.draining = false;
    window_.drainNode = nullptr;

    StartDraining(window_, *node_);
    EXPECT_TRUE(IsDraining());

    const EventNode other(L"Setup", L"Setup", 0x006);
    StartDraining(window_, other);
    EXPECT_EQ(window_.drainNode, &other);

    EXPECT_EQ(trace_.WideMessages(), (Lines{L"Drain Timer was not running.Setting drain node.",
                                            L"Drain Timer was running. Updating drain node."}));
}

TEST_F(DrainTest, ContinuesWhileTheLoadRuns) {
    Load(L"Acme-Foo", L"Foo");

    DrainRecords(window_);

    EXPECT_TRUE(IsDraining());
    EXPECT_EQ(window_.rows.RowCount(), 1u);
    EXPECT_TRUE(trace_.Calls().empty());
}

std::uint64_t g_now = 0;

ULONGLONG WINAPI Now() {
    return g_now;
}

TEST_F(DrainTest, RaisesTheRowCountOfARunningLoadAtMostEvery200Milliseconds) {
    const test::ImportPatch<decltype(GetTickCount64)> clock("GetTickCount64", Now);
    const RecordingControl list;
    window_.controls.list = list.handle();
    window_.lastCountUpdate = 1000;
    const auto rowCounts = [&] {
        std::vector<WPARAM> counts;
        for (const SentMessage& sent : list.Sent(LVM_SETITEMCOUNT)) {
            counts.push_back(sent.wParam);
        }
        return counts;
    };
    using testing::ElementsAre;

    g_now = 1200;
    Load(L"Acme-Foo", L"Foo");
    DrainRecords(window_);
    EXPECT_THAT(rowCounts(), ElementsAre());

    g_now = 1201;
    Load(L"Acme-Foo", L"Foo");
    DrainRecords(window_);
    EXPECT_THAT(rowCounts(), ElementsAre(2));

    g_now = 1202;
    Load(L"Acme-Foo", L"Foo");
    node_->done = 1;
    DrainRecords(window_);
    EXPECT_THAT(rowCounts(), ElementsAre(2, 3)) << "the end of a load is shown at once";
}

TEST_F(DrainTest, LeavesTheListAloneWhenNothingIsAdded) {
    const test::ImportPatch<decltype(GetTickCount64)> clock("GetTickCount64", Now);
    const RecordingControl list;
    window_.controls.list = list.handle();
    const auto countsAfterATickAt = [&](std::uint64_t now) {
        g_now = now;
        DrainRecords(window_);
        return list.Sent(LVM_SETITEMCOUNT).size();
    };

    Load(L"Acme-Foo", L"Foo");
    EXPECT_EQ(countsAfterATickAt(1000), 1u);
    EXPECT_EQ(countsAfterATickAt(2000), 1u);
    Load(L"Acme-Foo", L"Foo");
    EXPECT_EQ(countsAfterATickAt(3000), 2u);
    node_->done = 1;
    EXPECT_EQ(countsAfterATickAt(4000), 2u);
}

TEST_F(DrainTest, StopsAtTheEndOfTheLoad) {
    Load(L"Acme-Foo", L"Foo");
    node_->done = 1;

    DrainRecords(window_);

    EXPECT_TRUE(HasStopped());
    EXPECT_EQ(window_.rows.RowCount(), 1u);
    EXPECT_EQ(trace_.WideMessages(), Lines{kFinished});
}

TEST_F(DrainTest, StopsWithoutTakingRecordsWhenAnotherNodeIsShown) {
    Load(L"Acme-Foo", L"Foo");
    window_.currentNode = std::make_shared<EventNode>(L"Windows Logs", L"Windows-Logs", 0x041u);

    DrainRecords(window_);

    EXPECT_TRUE(HasStopped());
    EXPECT_EQ(window_.rows.LoadedCount(), 0u);
    EXPECT_EQ(node_->counter, 0u);
    EXPECT_EQ(trace_.WideMessages(), Lines{kSwitched});
}

TEST_F(DrainTest, IgnoresATickAfterItStopped) {
    window_.draining = false;
    window_.drainNode = nullptr;
    Load(L"Acme-Foo", L"Foo");

    DrainRecords(window_);

    EXPECT_EQ(window_.rows.LoadedCount(), 0u);
    EXPECT_TRUE(trace_.Calls().empty());
}

TEST_F(DrainTest, AddsTheProvidersFullNamesToTheKnownSources) {
    Load(L"Acme-Foo", L"Foo");
    Load(L"Acme-Bar", L"Bar");

    DrainRecords(window_);

    EXPECT_EQ(query::g_sourceFilterTable[node_.get()].knownSources,
              (query::SourceSet{L"Acme-Bar", L"Acme-Foo"}));
}

TEST_F(DrainTest, OfALoadThatFailedMidwayLetsTheNextSelectionReload) {
    Load(L"Acme-Foo", L"Foo");
    node_->loading = 1;
    node_->loadResult = 15011;

    DrainRecords(window_);

    EXPECT_TRUE(HasStopped());
    EXPECT_EQ(window_.rows.RowCount(), 1u) << "the records must stay";
    EXPECT_EQ(node_->loading.load(), 0u);
}

TEST_F(DrainTest, OfALoadThatSucceededKeepsItLoaded) {
    Load(L"Acme-Foo", L"Foo");
    node_->loading = 1;
    node_->done = 1;

    DrainRecords(window_);

    EXPECT_EQ(node_->loading.load(), 1u);
}

}  // namespace
}  // namespace tavrin::ui
