#include "ui/actions/channel_load.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/loading/channel_activity.h"
#include "eventlog/records/record_disposer.h"
#include "query/filter_state.h"
#include "support/refused_threads.h"
#include "support/test_record.h"
#include "support/wait_until.h"
#include "ui/actions/drain.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using eventlog::EventNode;

// A window without controls: messages to them have no effect.
class ChannelLoadTest : public testing::Test {
protected:
    ChannelLoadTest() { window_.currentNode = node_; }
    ~ChannelLoadTest() override {
        for (auto& [node, activity] : window_.activities) {
            eventlog::EndChannelActivity(activity);
        }
        for (eventlog::Worker& worker : window_.workers) {
            worker.thread.join();
        }
        query::g_sourceFilterTable.clear();
    }

    // Drains until the load has ended.
    void Drain() {
        EXPECT_TRUE(test::WaitUntil([this] {
            DrainRecords(window_);
            return !window_.draining;
        }));
    }

    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006u);
    MainWindow window_{nullptr};
};

TEST_F(ChannelLoadTest, FailsWithoutALoaderThreadAndSucceedsOnRefresh) {
    {
        const test::RefusedThreads refused{};
        StartLoad(window_, FilterText::Clear);
        EXPECT_EQ(node_->loadResult.load(), 164u);
        Drain();
    }
    EXPECT_EQ(window_.rows.RowCount(), 0u);

    Refresh(window_);
    Drain();
    EXPECT_EQ(node_->loadResult.load(), 0u);
    EXPECT_GT(window_.rows.RowCount(), 0u);
}

// Another channel with as many rows must be painted.
TEST_F(ChannelLoadTest, ForgetsTheRowCountThatTheListShows) {
    window_.shownRowCount = 7;
    StartLoad(window_, FilterText::Clear);
    EXPECT_EQ(window_.shownRowCount, std::nullopt);
}

TEST_F(ChannelLoadTest, AReloadWithoutThreadsLeavesNoOldRows) {
    StartLoad(window_, FilterText::Clear);
    Drain();
    {
        const test::RefusedThreads refused{};
        Refresh(window_);
        Drain();
    }
    EXPECT_EQ(window_.rows.LoadedCount(), 0u);
    EXPECT_EQ(node_->loadResult.load(), 164u);
}

TEST(RecordDisposer, WithoutAThreadFreesBeforeItReturns) {
    const test::RefusedThreads refused{};
    eventlog::LoadedRecords loaded;
    test::Append(loaded.records, {test::MakeRecord()});
    const std::weak_ptr<const eventlog::EventRecord> record = loaded.records[0];
    eventlog::RecordDisposer disposer;

    disposer.Dispose(std::move(loaded));

    EXPECT_TRUE(record.expired());
}

TEST_F(ChannelLoadTest, ManyRefreshesKeepNoThreadThatHasEnded) {
    StartLoad(window_, FilterText::Clear);
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(test::WaitUntil([this] { return window_.workers.back().hasEnded->load(); }));
        Refresh(window_);
        EXPECT_EQ(window_.workers.size(), 1u);
    }
}

}  // namespace
}  // namespace tavrin::ui
