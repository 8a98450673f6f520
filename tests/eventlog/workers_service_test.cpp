#include "eventlog/loading/workers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/service/evt_handle.h"
#include "replay/replay_control.h"
#include "support/import_patch.h"
#include "support/trace_capture.h"
#include "support/wait_until.h"

#include "posted_messages.h"
#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;
using Messages = std::vector<PostedMessage>;

const HWND kWindow = reinterpret_cast<HWND>(std::uintptr_t{0x1234});

class TreeBuilderTest : public ServiceTest {
protected:
    TreeBuilderTest() {
        recording_.AddChannel({.name = L"System"});
        g_eventApiContext = std::make_shared<EventAPIContext>();
        g_eventApiContext->wrapper = std::make_unique<EventWrapper>();
        g_eventApiContext->tree = std::make_shared<ChannelsTree>();
    }
    ~TreeBuilderTest() override { g_eventApiContext.reset(); }

    PostedMessages posted_;
    test::TraceCapture trace_;
};

TEST_F(TreeBuilderTest, FillsTheContextsTreeAndPostsItsCompletion) {
    Serve();
    StartTreeBuilder(kWindow).thread.join();

    EXPECT_EQ(g_eventApiContext->tree->VertexCount(), 4u);
    EXPECT_EQ(posted_.Take(), (Messages{{kWindow, 0x401, 0, 0}}));
}

TEST_F(TreeBuilderTest, PostsItsCompletionEvenWithoutAChannelList) {
    Serve();
    Script(L"fail EvtOpenChannelEnum code=1722");
    StartTreeBuilder(kWindow).thread.join();

    EXPECT_EQ(g_eventApiContext->tree->VertexCount(), 3u);
    EXPECT_EQ(posted_.Take(), (Messages{{kWindow, 0x401, 0, 0}}));
}

EVT_HANDLE WINAPI ThrowAtOpenChannelEnum(EVT_HANDLE, DWORD) {
    throw std::runtime_error("the enumeration threw");
}

TEST_F(TreeBuilderTest, PostsItsCompletionEvenAfterAnException) {
    const test::ImportPatch<decltype(EvtOpenChannelEnum)> patch("EvtOpenChannelEnum",
                                                                ThrowAtOpenChannelEnum);
    StartTreeBuilder(kWindow).thread.join();

    EXPECT_EQ(posted_.Take(), (Messages{{kWindow, 0x401, 0, 0}}));
    EXPECT_EQ(trace_.NarrowMessages(), Lines{L"the enumeration threw"});
}

class RecordCounterTest : public ServiceTest {
protected:
    RecordCounterTest() {
        recording_.AddChannel({.name = L"System"});
        recording_.WriteEvents(L"System", test::Events(5));
    }

    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006);
    PostedMessages posted_;
    test::TraceCapture trace_;
};

TEST_F(RecordCounterTest, PostsTheCountWithTheNodesAddress) {
    Serve();
    StartRecordCounter(kWindow, node_).thread.join();

    EXPECT_EQ(posted_.Take(),
              (Messages{{kWindow, 0x402, 5, reinterpret_cast<LPARAM>(node_.get())}}));
}

TEST_F(RecordCounterTest, PostsNothingWhenTheCountFails) {
    Serve();
    Script(L"fail EvtOpenLog code=5");
    StartRecordCounter(kWindow, node_).thread.join();

    EXPECT_TRUE(posted_.Take().empty());
    EXPECT_EQ(trace_.NarrowMessages(), Lines{L"EvtOpenLog failed"});
}

TEST_F(RecordCounterTest, HoldsTheNodeUntilItEnds) {
    Serve();
    Script(L"block EvtOpenLog until-event=\"tavrin-count\"");
    const UniqueKernelHandle go(CreateEventW(nullptr, TRUE, FALSE, L"tavrin-count"));
    std::thread counter = StartRecordCounter(kWindow, node_).thread;

    EXPECT_EQ(node_.use_count(), 2);

    SetEvent(go.get());
    counter.join();
    EXPECT_EQ(node_.use_count(), 1);
}

std::wstring StepLine(int round, int result, std::uint64_t loaded) {
    return L"\n\nInside thread Loop - i: " + std::to_wstring(round) + L" - ret: " +
           std::to_wstring(result) + L" - loaded: " + std::to_wstring(loaded);
}

class ChannelLoaderTest : public ServiceTest {
protected:
    ChannelLoaderTest() {
        recording_.AddChannel({.name = L"System"});
        recording_.AddChannel(
            {.name = L"Large", .attributes = L"events=\"25000\" providers=\"3\""});
    }

    void TearDown() override {
        if (loader_.joinable()) {
            StopLoad(*node_);
            loader_.join();
        }
        ServiceTest::TearDown();
    }

    void Show(const wchar_t* channel) {
        node_ = std::make_shared<EventNode>(channel, channel, 0x006u);
        node_->loading = 1;
    }

    void Start() { loader_ = StartChannelLoader(kWindow, node_); }

    void RunToEnd() {
        Start();
        loader_.join();
    }

    // Returns once the loader is blocked in this call. It stays blocked until go_ is set or the
    // call is cancelled.
    void StartAndBlockIn(const wchar_t* function, int call) {
        ResetEvent(go_.get());
        ResetEvent(in_.get());
        Script(std::wstring(L"block ")
                   .append(function)
                   .append(L" call=")
                   .append(std::to_wstring(call))
                   .append(L" until-event=\"tavrin-go\" entered-event=\"tavrin-in\""));
        Start();
        ASSERT_EQ(WaitForSingleObject(in_.get(), 20'000), WAIT_OBJECT_0);
    }

    bool PausesAt(std::uint64_t count) {
        return test::WaitUntil([&] { return node_->loadedCount.load() >= count; }) &&
               test::HoldsFor(std::chrono::milliseconds(50),
                              [&] { return node_->loadedCount.load() == count; });
    }

    std::size_t RecordCount() {
        const std::lock_guard lock(node_->recordListMutex);
        return node_->recordList.size();
    }

    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006);
    const UniqueKernelHandle go_{CreateEventW(nullptr, TRUE, FALSE, L"tavrin-go")};
    const UniqueKernelHandle in_{CreateEventW(nullptr, TRUE, FALSE, L"tavrin-in")};
    std::thread loader_;
    test::TraceCapture trace_;
};

TEST_F(ChannelLoaderTest, ReadsAChannelBelowTheLimitToItsEnd) {
    recording_.WriteEvents(L"System", test::Events(300));
    Serve();
    Show(L"System");
    RunToEnd();

    EXPECT_EQ(RecordCount(), 300u);
    EXPECT_EQ(node_->loadedCount.load(), 300u);
    EXPECT_EQ(node_->done.load(), 1u);
    EXPECT_EQ(node_->loadResult.load(), 0u);
    EXPECT_EQ(node_->loading.load(), 1u);
    EXPECT_EQ(replay::CallsOf(L"EvtQuery"), 1u);
}

TEST_F(ChannelLoaderTest, TracesEachStepAfterIt) {
    recording_.WriteEvents(L"System", test::Events(130));
    Serve();
    Show(L"System");
    RunToEnd();

    EXPECT_EQ(
        trace_.WideMessages(),
        (Lines{L"Loaded 128 events to channel: System", StepLine(0, 128, 128),
               L"Loaded 2 events to channel: System", StepLine(1, 2, 130), StepLine(2, 0, 130)}));
}

TEST_F(ChannelLoaderTest, WritesTheTwoLineFeedsOfAStepBehindThePrefix) {
    Serve();
    Show(L"System");
    RunToEnd();

    ASSERT_EQ(trace_.Calls().size(), 1u);
    EXPECT_EQ(trace_.Calls()[0].text,
              L"[Thread " + std::to_wstring(trace_.Calls()[0].threadId) +
                  L"] => \n\nInside thread Loop - i: 0 - ret: 0 - loaded: 0\n");
}

TEST_F(ChannelLoaderTest, PausesAtThePageThatReachesTheLimit) {
    Serve();
    Show(L"Large");
    Start();

    EXPECT_TRUE(PausesAt(10112));
    EXPECT_EQ(RecordCount(), 10112u);
    EXPECT_EQ(replay::OpenHandles(L"Query"), 1u) << "the query must stay open";
    EXPECT_EQ(node_->done.load(), 0u);
    EXPECT_EQ(node_->loading.load(), 1u);
}

TEST_F(ChannelLoaderTest, PausesWhenTheLimitIsReachedExactly) {
    Serve();
    Show(L"Large");
    node_->loadLimit = 256;
    Start();

    EXPECT_TRUE(PausesAt(256));
}

TEST_F(ChannelLoaderTest, GoesBackToSleepAfterASpuriousWakeup) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));

    node_->loadCondition.notify_all();

    EXPECT_TRUE(PausesAt(10112));
}

TEST_F(ChannelLoaderTest, GoesOnToTheNextLimitWhenExtended) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));

    ExtendLoad(*node_);

    EXPECT_TRUE(PausesAt(20224));
    EXPECT_EQ(replay::CallsOf(L"EvtQuery"), 1u) << "the same query must be used";
}

TEST_F(ChannelLoaderTest, ReadsToTheEndWhenUnlimited) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));

    UnlimitLoad(*node_);
    loader_.join();

    EXPECT_EQ(RecordCount(), 25000u);
    EXPECT_EQ(node_->done.load(), 1u);
}

TEST_F(ChannelLoaderTest, EndsWhenStoppedWhilePaused) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));

    StopLoad(*node_);
    loader_.join();

    EXPECT_EQ(node_->loadedCount.load(), 10112u);
    EXPECT_EQ(node_->done.load(), 0u);
    EXPECT_EQ(node_->loadResult.load(), 0u);
    EXPECT_EQ(node_->loading.load(), 1u);
    EXPECT_EQ(replay::OpenHandles(), 0u);
}

TEST_F(ChannelLoaderTest, DoesNothingWhenStoppedBeforeItStarts) {
    recording_.WriteEvents(L"System", test::Events(1));
    Serve();
    Show(L"System");
    node_->loadResult = 77;
    StopLoad(*node_);
    RunToEnd();

    EXPECT_TRUE(TakeCalls().empty());
    EXPECT_TRUE(trace_.Calls().empty());
    EXPECT_EQ(node_->loadResult.load(), 77u);
    EXPECT_EQ(node_->loading.load(), 1u);
}

TEST_F(ChannelLoaderTest, EndsAfterTheStepInWhichItIsStopped) {
    Serve();
    Show(L"Large");
    StartAndBlockIn(L"EvtRender", 200);

    StopLoad(*node_);
    AwaitReadEnd(*node_);
    SetEvent(go_.get());
    loader_.join();

    EXPECT_EQ(node_->loadedCount.load(), 256u) << "the step must complete";
    EXPECT_EQ(replay::CallsOf(L"EvtNext"), 2u);
    EXPECT_EQ(trace_.WideMessages().back(), StepLine(1, 128, 256));
}

TEST_F(ChannelLoaderTest, StoppingCancelsAReadWithoutAFailure) {
    Serve();
    const struct {
        const wchar_t* function;
        int call;
        std::uint64_t loaded;
    } cases[] = {{L"EvtSeek", 1, 0}, {L"EvtNext", 1, 0}, {L"EvtNext", 3, 256}};
    for (const auto& [function, call, loaded] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(function)));
        Show(L"Large");
        StartAndBlockIn(function, call);

        StopLoad(*node_);
        AwaitReadEnd(*node_);
        loader_.join();

        EXPECT_EQ(node_->loadedCount.load(), loaded);
        EXPECT_EQ(node_->loadResult.load(), 0u);
        EXPECT_EQ(node_->done.load(), 0u);
        EXPECT_EQ(node_->loading.load(), 1u);
        EXPECT_TRUE(std::ranges::none_of(trace_.WideMessages(), [](const std::wstring& line) {
            return line.find(L"failed") != std::wstring::npos;
        }));
        EXPECT_EQ(replay::OpenHandles(), 0u);
    }
}

decltype(&EvtCancel) g_originalCancel = nullptr;
int g_cancels = 0;

// Drops the first cancel, as if the read had begun just after it.
BOOL WINAPI LoseTheFirstCancel(EVT_HANDLE handle) {
    return ++g_cancels == 1 ? TRUE : g_originalCancel(handle);
}

TEST_F(ChannelLoaderTest, AReadThatBeginsJustAfterTheCancelIsCancelledAgain) {
    Serve();
    Show(L"Large");
    const test::ImportPatch<decltype(EvtCancel)> patch("EvtCancel", LoseTheFirstCancel);
    g_originalCancel = patch.Original();
    g_cancels = 0;
    StartAndBlockIn(L"EvtNext", 2);

    StopLoad(*node_);
    EXPECT_EQ(g_cancels, 1);
    AwaitReadEnd(*node_);
    loader_.join();

    EXPECT_EQ(node_->loadedCount.load(), 128u);
    EXPECT_EQ(node_->loadResult.load(), 0u);
}

TEST_F(ChannelLoaderTest, AReadThatIsCancelledWithoutAStopFails) {
    Serve();
    Show(L"System");
    Script(L"fail EvtNext code=1223");
    RunToEnd();

    EXPECT_EQ(node_->loadResult.load(), 1223u);
    EXPECT_EQ(trace_.WideMessages().front(), L"EvtNext failed with 1223");
}

TEST_F(ChannelLoaderTest, IsInNoReadWhileItRendersOrWaits) {
    Serve();
    Show(L"Large");
    StartAndBlockIn(L"EvtRender", 1);
    {
        const std::lock_guard lock(node_->loadMutex);
        EXPECT_EQ(node_->pendingRead, nullptr);
    }
    SetEvent(go_.get());
    ASSERT_TRUE(PausesAt(10112));
    const std::lock_guard lock(node_->loadMutex);
    EXPECT_EQ(node_->pendingRead, nullptr);
}

TEST_F(ChannelLoaderTest, AFailureBeforeTheFirstRecordKeepsItsCodeAndClearsLoading) {
    Serve();
    for (const wchar_t* function : {L"EvtQuery", L"EvtSeek", L"EvtNext"}) {
        Show(L"System");
        Script(std::wstring(L"fail ") + function + L" code=15022");
        RunToEnd();

        EXPECT_EQ(node_->loadResult.load(), 15022u);
        EXPECT_EQ(node_->loading.load(), 0u);
        EXPECT_EQ(trace_.WideMessages().back(), StepLine(0, -1, 0));
    }
}

TEST_F(ChannelLoaderTest, AFailureAfterRecordsKeepsItsCodeAndLeavesLoading) {
    Serve();
    Show(L"Large");
    Script(L"fail EvtNext code=15011 call=3");
    RunToEnd();

    EXPECT_EQ(node_->loadResult.load(), 15011u);
    EXPECT_EQ(node_->loading.load(), 1u);
    EXPECT_EQ(RecordCount(), 256u);
    EXPECT_EQ(node_->done.load(), 0u);
    EXPECT_EQ(trace_.WideMessages().back(), StepLine(2, -1, 256));
}

TEST_F(ChannelLoaderTest, AFailureWithoutACodeIsAnInternalError) {
    Serve();
    for (const wchar_t* function : {L"EvtQuery", L"EvtSeek", L"EvtNext"}) {
        Show(L"System");
        Script(std::wstring(L"fail ") + function + L" code=0");
        RunToEnd();

        EXPECT_EQ(node_->loadResult.load(), 1359u) << testing::PrintToString(function);
        EXPECT_EQ(node_->loading.load(), 0u);
        EXPECT_EQ(trace_.WideMessages().back(), StepLine(0, -1, 0));
    }
}

TEST_F(ChannelLoaderTest, AnExceptionIsTracedAndEndsTheLoadAsFailed) {
    node_ = std::make_shared<EventNode>(L"Windows Logs", L"Windows-Logs", 0x041u);
    node_->loading = 1;
    RunToEnd();

    EXPECT_EQ(trace_.NarrowMessages(), Lines{L"Windows-Logs is not a channel!"});
    EXPECT_EQ(trace_.WideMessages(), Lines{StepLine(0, -1, 0)});
    EXPECT_EQ(node_->loadResult.load(), 1359u);
    EXPECT_EQ(node_->loading.load(), 0u);
}

EVT_HANDLE WINAPI QueryWithoutMemory(EVT_HANDLE, LPCWSTR, LPCWSTR, DWORD) {
    throw std::bad_alloc();
}

TEST_F(ChannelLoaderTest, OutOfMemoryHasItsOwnCode) {
    const test::ImportPatch<decltype(EvtQuery)> patch("EvtQuery", QueryWithoutMemory);
    Show(L"System");
    RunToEnd();

    EXPECT_EQ(node_->loadResult.load(), 8u);
    EXPECT_EQ(node_->loading.load(), 0u);
}

decltype(&EvtNext) g_originalNext = nullptr;
int g_nextCalls = 0;

BOOL WINAPI ThrowAtThirdNext(EVT_HANDLE set, DWORD size, EVT_HANDLE* events, DWORD timeout,
                             DWORD flags, PDWORD returned) {
    if (++g_nextCalls == 3) {
        throw std::runtime_error("the third page threw");
    }
    return g_originalNext(set, size, events, timeout, flags, returned);
}

TEST_F(ChannelLoaderTest, AnExceptionAfterRecordsClosesTheQueryAndLeavesLoading) {
    Serve();
    Show(L"Large");
    const test::ImportPatch<decltype(EvtNext)> patch("EvtNext", ThrowAtThirdNext);
    g_originalNext = patch.Original();
    g_nextCalls = 0;
    RunToEnd();

    EXPECT_EQ(trace_.NarrowMessages(), Lines{L"the third page threw"});
    EXPECT_EQ(node_->loadResult.load(), 1359u);
    EXPECT_EQ(node_->loading.load(), 1u);
    EXPECT_EQ(RecordCount(), 256u);
    EXPECT_EQ(replay::OpenHandles(), 0u);
}

TEST_F(ChannelLoaderTest, AStepWithoutRecordsIsNotTheEnd) {
    recording_.WriteEvents(L"System", test::Events(130));
    Serve();
    Show(L"System");
    Script(L"fail EvtCreateRenderContext code=8");
    RunToEnd();

    EXPECT_EQ(trace_.WideMessages(),
              (Lines{L"Loaded 128 events to channel: System", StepLine(0, 0, 0),
                     L"Loaded 2 events to channel: System", StepLine(1, 0, 0), StepLine(2, 0, 0)}));
    EXPECT_EQ(node_->done.load(), 1u);
    EXPECT_EQ(node_->loadResult.load(), 0u);
}

TEST_F(ChannelLoaderTest, HoldsTheNodeUntilItEnds) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));
    EXPECT_EQ(node_.use_count(), 2);

    StopLoad(*node_);
    loader_.join();

    EXPECT_EQ(node_.use_count(), 1);
}

TEST_F(ChannelLoaderTest, UsesOneRenderContextAndClosesItWithTheThread) {
    Serve();
    Show(L"Large");
    Start();
    ASSERT_TRUE(PausesAt(10112));
    EXPECT_EQ(replay::OpenHandles(L"RenderContext"), 1u);

    StopLoad(*node_);
    loader_.join();

    EXPECT_EQ(replay::CallsOf(L"EvtCreateRenderContext"), 1u);
    EXPECT_EQ(replay::OpenHandles(L"RenderContext"), 0u);
}

}  // namespace
}  // namespace tavrin::eventlog
