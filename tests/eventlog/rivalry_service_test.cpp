// Runs the window thread and every kind of worker at once. The test thread makes the same calls on
// the nodes as the window, in the same order, but far more often because it shows nothing. A race
// detector reports what the assertions cannot see.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/details/event_details.h"
#include "eventlog/loading/channel_activity.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/worker_messages.h"
#include "eventlog/loading/workers.h"
#include "eventlog/records/event_record.h"
#include "eventlog/records/record_disposer.h"
#include "query/event_rows.h"
#include "replay/replay_control.h"
#include "support/fresh_thread.h"
#include "support/wait_until.h"

#include "posted_messages.h"
#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

const HWND kWindow = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
constexpr std::uint32_t kAdminChannel = 0x006;
constexpr std::uint64_t kEventsAtFirst = 22'000;  // more than two pages of a load
constexpr const wchar_t* kChannels[] = {L"One", L"Two", L"Three"};
constexpr std::size_t kTreeSize = 3 + std::size(kChannels);

// Stands in for the main window: the channels, the shown one and its rows.
class Window {
public:
    Window() {
        for (const wchar_t* channel : kChannels) {
            nodes_.push_back(std::make_shared<EventNode>(channel, channel, kAdminChannel));
        }
        Show(0);
    }
    ~Window() {
        for (const auto& [node, activity] : activities_) {
            StopLoad(*activity.node);
        }
        for (auto& [node, activity] : activities_) {
            EndChannelActivity(activity);
        }
        for (Worker& counter : counters_) {
            counter.thread.join();
        }
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    EventNode& Shown() { return *shown_; }
    const query::EventRows& Rows() const { return rows_; }
    std::size_t CountersStarted() const { return counters_.size(); }
    bool HasNewEvents() const { return CheckNewEvents(activities_, shown_.get()); }

    void Show(std::size_t channel) {
        shown_ = nodes_[channel];
        counters_.push_back(StartRecordCounter(kWindow, shown_));
        StartLoad();
    }

    void Refresh() {
        EndChannelActivity(activities_.at(shown_.get()));
        disposer_.Dispose(ResetForLoad(*shown_, shown_->query));
        StartLoad();
    }

    // Returns false when the load has ended. Checks that records arrive newest first and only once.
    bool Drain() {
        const auto first = static_cast<std::int64_t>(rows_.RowCount());
        const bool more = rows_.TakeBatch(*shown_).more;
        rows_.AppendMatching(L"");
        for (std::int64_t row = first; const EventRecord* record = rows_.Row(row); ++row) {
            EXPECT_TRUE(lastId_ == 0 || record->recordId == lastId_ - 1)
                << record->recordId << " follows " << lastId_;
            lastId_ = record->recordId;
        }
        return more;
    }

    // Formats the description of the first row, if there is one.
    void Describe() const {
        const EventRecord* const record = rows_.Row(0);
        std::wstring text;
        if (record != nullptr) {
            EXPECT_EQ(FormatEventDescription(shown_->id, record->recordId, record->eventId,
                                             record->providerName, text),
                      0u);
        }
    }

private:
    void StartLoad() {
        disposer_.Dispose(rows_.Clear());
        lastId_ = 0;
        RewindRecords(*shown_);
        if (BeginLoad(*shown_)) {
            StartChannelActivity(kWindow, shown_, activities_);
        }
    }

    std::vector<std::shared_ptr<EventNode>> nodes_;
    std::shared_ptr<EventNode> shown_;
    ChannelActivityTable activities_;
    std::vector<Worker> counters_;
    query::EventRows rows_;
    RecordDisposer disposer_;
    std::uint64_t lastId_ = 0;
};

// Adds events on a thread while it lives: at least one to every channel.
class Arrivals {
public:
    Arrivals()
        : thread_([this] {
              for (std::size_t i = 0; i < std::size(kChannels) || (!stop_ && i < kMost); ++i) {
                  replay::Do(std::wstring(L"arrive provider=Late message=Late channel=")
                                 .append(kChannels[i % std::size(kChannels)]));
              }
          }) {}
    ~Arrivals() {
        stop_ = true;
        thread_.join();
    }
    Arrivals(const Arrivals&) = delete;
    Arrivals& operator=(const Arrivals&) = delete;

private:
    static constexpr std::size_t kMost = 3000;

    std::atomic<bool> stop_{false};
    std::thread thread_;
};

// Builds one tree after another. Each is read after its completion message.
class Trees {
public:
    Trees() {
        g_eventApiContext = std::make_shared<EventAPIContext>();
        g_eventApiContext->wrapper = std::make_unique<EventWrapper>();
        Start();
    }
    ~Trees() {
        builder_.thread.join();
        g_eventApiContext.reset();
    }
    Trees(const Trees&) = delete;
    Trees& operator=(const Trees&) = delete;

    void OnBuilt() {
        const ChannelsTree& tree = *g_eventApiContext->tree;
        ASSERT_EQ(tree.VertexCount(), kTreeSize);
        for (VertexDescriptor vertex = 0; vertex < tree.VertexCount(); ++vertex) {
            EXPECT_FALSE(tree.GetNode(vertex)->name.empty());
        }
        builder_.thread.join();
        Start();
    }

private:
    void Start() {
        g_eventApiContext->tree = std::make_shared<ChannelsTree>();
        builder_ = StartTreeBuilder(kWindow);
    }

    Worker builder_;
};

// The user's actions. Frequent actions appear several times in kActions.
enum class Action { Drain, Scroll, Filter, Refresh, Show, Describe };
constexpr Action kActions[] = {Action::Drain,    Action::Drain,  Action::Drain,   Action::Drain,
                               Action::Scroll,   Action::Scroll, Action::Refresh, Action::Show,
                               Action::Describe, Action::Filter};
constexpr int kSteps = 200;

// The parameter is the random seed.
class RivalryTest : public ServiceTest, public testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        for (const wchar_t* channel : kChannels) {
            recording_.AddChannel({.name = channel,
                                   .attributes = L"providers=\"3\" events=\"" +
                                                 std::to_wstring(kEventsAtFirst) + L"\""});
        }
        Serve();
        replay::StopCallLog();  // its lock would order the threads and hide races
    }

    void Step(Window& window) {
        switch (kActions[Below(std::size(kActions))]) {
            case Action::Drain: window.Drain(); break;
            case Action::Scroll: ExtendLoad(window.Shown()); break;
            case Action::Filter: UnlimitLoad(window.Shown()); break;
            case Action::Refresh: window.Refresh(); break;
            case Action::Show: window.Show(Below(std::size(kChannels))); break;
            case Action::Describe: window.Describe(); break;
        }
        window.HasNewEvents();
    }

    void TakeMessages(Trees& trees) {
        for (const PostedMessage& message : posted_.Take()) {
            if (message.message == WM_CHANNELS_TREE_BUILT) {
                trees.OnBuilt();
            } else {
                ++counts_;
            }
        }
    }

    void Walk(Window& window, Trees& trees) {
        const Arrivals arrivals;
        for (int step = 0; step < kSteps; ++step) {
            Step(window);
            TakeMessages(trees);
        }
    }

    static void ExpectEveryRecordIsTaken(Window& window) {
        window.Refresh();
        UnlimitLoad(window.Shown());
        EXPECT_TRUE(test::WaitUntil([&window] { return !window.Drain(); }));
        EXPECT_EQ(window.Rows().LoadedCount(), window.Shown().loadedCount.load());
        EXPECT_GT(window.Rows().LoadedCount(), kEventsAtFirst)
            << "the arrived events must be loaded";
        EXPECT_EQ(window.Shown().loadResult.load(), 0u);
    }

    static void ExpectNewEventsAreReported(Window& window) {
        EXPECT_FALSE(window.HasNewEvents());
        ASSERT_TRUE(replay::Do(L"arrive provider=Last channel=" + window.Shown().id));
        EXPECT_TRUE(test::WaitUntil([&window] { return window.HasNewEvents(); }));
    }

    void Run() {
        Trees trees;
        std::size_t countersStarted = 0;
        {
            Window window;
            Walk(window, trees);
            ExpectEveryRecordIsTaken(window);
            ExpectNewEventsAreReported(window);
            countersStarted = window.CountersStarted();
        }
        TakeMessages(trees);
        EXPECT_EQ(counts_, countersStarted);
    }

private:
    std::size_t Below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }

    PostedMessages posted_;
    std::size_t counts_ = 0;
    std::mt19937 random_{GetParam()};
};

TEST_P(RivalryTest, NoActionLosesOrDuplicatesARecord) {
    // A fresh thread, because a thread's render context is closed when the thread ends.
    test::OnFreshThread([this] { Run(); });
}

INSTANTIATE_TEST_SUITE_P(Walks, RivalryTest, testing::Range(1u, 4u));

}  // namespace
}  // namespace tavrin::eventlog
