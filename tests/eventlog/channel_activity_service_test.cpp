#include "eventlog/loading/channel_activity.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "eventlog/loading/load_protocol.h"
#include "replay/replay_control.h"
#include "support/import_patch.h"
#include "support/trace_capture.h"
#include "support/wait_until.h"

#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;

const HWND kWindow = reinterpret_cast<HWND>(std::uintptr_t{0x1234});

const std::wstring kWantedOnly =
    L"<QueryList><Query Id='0' Path='System'><Select Path='System'>*[System[Provider["
    L"@Name=&quot;Acme-Wanted&quot;]]]</Select></Query></QueryList>";

class ChannelActivityTest : public ServiceTest {
protected:
    ChannelActivityTest() {
        recording_.AddChannel({.name = L"System"});
        recording_.WriteEvents(L"System", test::Events(3));
        recording_.AddChannel(
            {.name = L"Large", .attributes = L"events=\"25000\" providers=\"3\""});
    }

    void TearDown() override {
        EndAll();
        ServiceTest::TearDown();
    }

    // Starts the node's activity and joins its loader.
    ChannelActivity& StartAndLoad() {
        StartChannelActivity(kWindow, node_, table_);
        EXPECT_TRUE(test::WaitUntil(
            [this] { return node_->done.load() != 0 || node_->loadResult.load() != 0; }));
        return table_.at(node_.get());
    }

    void EndAll() {
        for (auto& entry : table_) {
            EndChannelActivity(entry.second);
        }
    }

    std::shared_ptr<EventNode> node_ = std::make_shared<EventNode>(L"System", L"System", 0x006u);
    ChannelActivityTable table_;
    test::TraceCapture trace_;
};

TEST_F(ChannelActivityTest, MakesAnEntryForTheNodeAndHoldsIt) {
    Serve();
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_EQ(table_.size(), 1u);
    EXPECT_EQ(activity.node, node_);
    EXPECT_TRUE(activity.worker.joinable());
    EXPECT_TRUE(activity.newEventsSignal);
    EXPECT_TRUE(activity.subscription);
}

TEST_F(ChannelActivityTest, LoadsTheChannel) {
    Serve();
    StartAndLoad();

    EXPECT_EQ(node_->loadedCount.load(), 3u);
    EXPECT_EQ(node_->done.load(), 1u);
}

TEST_F(ChannelActivityTest, SubscribesToTheWholeChannelWithoutAQuery) {
    Serve();
    StartAndLoad();

    const Lines calls = TakeCalls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[0],
              L"EvtSubscribe(Session=NULL, SignalEvent=set, ChannelPath=\"System\", Query=\"*\", "
              L"Bookmark=NULL, Context=NULL, Callback=NULL, Flags=0x1)");
    EXPECT_EQ(calls[1],
              L"EvtNext(ResultSet=#1, EventArraySize=16, EventArray=set, Timeout=0, Flags=0x0)");
}

TEST_F(ChannelActivityTest, SubscribesWithTheNodesQueryAndNoPath) {
    Serve();
    node_->query = kWantedOnly;
    StartAndLoad();

    EXPECT_EQ(TakeCallsOf(L"EvtSubscribe"),
              Lines{L"EvtSubscribe(Session=NULL, SignalEvent=set, ChannelPath=NULL, Query=\"" +
                    kWantedOnly + L"\", Bookmark=NULL, Context=NULL, Callback=NULL, Flags=0x1)"});
}

TEST_F(ChannelActivityTest, TreatsAFailedFirstReadAsNoPendingEvents) {
    Serve();
    Script(L"fail EvtNext code=4317 call=1");
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_TRUE(activity.subscription);
    EXPECT_EQ(WaitForSingleObject(activity.newEventsSignal.get(), 0),
              static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(node_->loadedCount.load(), 3u);
    EXPECT_TRUE(std::ranges::none_of(trace_.WideMessages(), [](const std::wstring& line) {
        return line.find(L"failed") != std::wstring::npos;
    }));
}

// Two pending events, which the patched EvtNext returns to the subscription.
const EVT_HANDLE kPending[] = {reinterpret_cast<EVT_HANDLE>(std::uintptr_t{0x7001}),
                               reinterpret_cast<EVT_HANDLE>(std::uintptr_t{0x7002})};
decltype(&EvtNext) g_originalNext = nullptr;
decltype(&EvtClose) g_originalClose = nullptr;
std::vector<EVT_HANDLE> g_pendingClosed;

BOOL WINAPI NextWithPendingEvents(EVT_HANDLE set, DWORD size, EVT_HANDLE* events, DWORD timeout,
                                  DWORD flags, PDWORD returned) {
    if (size != 16) {
        return g_originalNext(set, size, events, timeout, flags, returned);
    }
    std::ranges::copy(kPending, events);
    *returned = 2;
    return TRUE;
}

// Succeeds without events for the first read of a watch.
BOOL WINAPI NextWithoutPendingEvents(EVT_HANDLE set, DWORD size, EVT_HANDLE* events, DWORD timeout,
                                     DWORD flags, PDWORD returned) {
    if (size != 16) {
        return g_originalNext(set, size, events, timeout, flags, returned);
    }
    *returned = 0;
    return TRUE;
}

BOOL WINAPI CloseWithPendingEvents(EVT_HANDLE handle) {
    if (std::ranges::count(kPending, handle) == 0) {
        return g_originalClose(handle);
    }
    g_pendingClosed.push_back(handle);
    return TRUE;
}

TEST_F(ChannelActivityTest, AReadOfNoPendingEventsIsNoNews) {
    Serve();
    const test::ImportPatch<decltype(EvtNext)> next("EvtNext", NextWithoutPendingEvents);
    g_originalNext = next.Original();
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_EQ(WaitForSingleObject(activity.newEventsSignal.get(), 0),
              static_cast<DWORD>(WAIT_TIMEOUT));
    EndAll();
}

TEST_F(ChannelActivityTest, ClosesPendingEventsUnreadAndCountsThemAsNew) {
    Serve();
    const test::ImportPatch<decltype(EvtNext)> next("EvtNext", NextWithPendingEvents);
    const test::ImportPatch<decltype(EvtClose)> close("EvtClose", CloseWithPendingEvents);
    g_originalNext = next.Original();
    g_originalClose = close.Original();
    g_pendingClosed.clear();
    StartAndLoad();

    EXPECT_EQ(g_pendingClosed, std::vector<EVT_HANDLE>(std::begin(kPending), std::end(kPending)));
    EXPECT_TRUE(CheckNewEvents(table_, node_.get()));
    EndAll();
}

// The event objects that the patched CreateEventW and CloseHandle saw.
struct EventObjects {
    std::mutex mutex;
    std::set<std::size_t> refused;  // numbers of the calls to fail; the first call is 1
    std::size_t calls = 0;
    bool asAsked = true;
    std::vector<HANDLE> made;
    std::vector<HANDLE> open;  // not by value in `made`: Windows reuses values of closed handles
};
EventObjects* g_events = nullptr;
decltype(&CreateEventW) g_originalCreateEvent = nullptr;
decltype(&CloseHandle) g_originalCloseHandle = nullptr;

HANDLE WINAPI MakeEvent(LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL signalled, LPCWSTR name) {
    const std::lock_guard lock(g_events->mutex);
    g_events->asAsked =
        g_events->asAsked && security == nullptr && manual && !signalled && name == nullptr;
    if (g_events->refused.contains(++g_events->calls)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    g_events->made.push_back(g_originalCreateEvent(security, manual, signalled, name));
    g_events->open.push_back(g_events->made.back());
    return g_events->made.back();
}

BOOL WINAPI CloseObject(HANDLE object) {
    {
        const std::lock_guard lock(g_events->mutex);
        std::erase(g_events->open, object);
    }
    return g_originalCloseHandle(object);
}

class ChannelActivityEvents : public ChannelActivityTest {
protected:
    ChannelActivityEvents() {
        g_events = &events_;
        g_originalCreateEvent = create_.Original();
        g_originalCloseHandle = close_.Original();
    }

    EventObjects events_;

private:
    test::ImportPatch<decltype(CreateEventW)> create_{"CreateEventW", MakeEvent};
    test::ImportPatch<decltype(CloseHandle)> close_{"CloseHandle", CloseObject};
};

TEST_F(ChannelActivityEvents, AreManualResetNotSignalledAndWithoutName) {
    Serve();
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_TRUE(events_.asAsked);
    EXPECT_EQ(events_.made, std::vector<HANDLE>{activity.newEventsSignal.get()});
}

TEST_F(ChannelActivityEvents, ThatCannotBeCreatedLeaveTheChannelLoadedButUnwatched) {
    Serve();
    events_.refused = {1};
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_FALSE(activity.newEventsSignal);
    EXPECT_FALSE(activity.subscription);
    EXPECT_EQ(replay::CallsOf(L"EvtSubscribe"), 0u);
    EXPECT_EQ(node_->loadedCount.load(), 3u);
    EXPECT_EQ(trace_.WideMessages().front(), L"Loaded 3 events to channel: System");
}

TEST_F(ChannelActivityEvents, ThatCannotBeCreatedCostOnlyTheSubscriptionOfTheirStart) {
    Serve();
    for (const std::set<std::size_t>& refused :
         std::vector<std::set<std::size_t>>{{1}, {2}, {3}, {1, 2, 3}, {2, 3}}) {
        SCOPED_TRACE(testing::PrintToString(refused));
        events_.refused = refused;
        events_.calls = 0;
        for (const std::size_t start : {1u, 2u, 3u}) {
            SCOPED_TRACE(start);
            ResetForLoad(*node_, L"");
            const ChannelActivity& activity = StartAndLoad();

            const std::size_t watched = refused.contains(start) ? 0 : 1;
            EXPECT_EQ(activity.newEventsSignal ? 1u : 0u, watched);
            EXPECT_EQ(replay::OpenHandles(L"Subscription"), watched);
            EXPECT_EQ(events_.open.size(), watched) << "the previous start's event must be closed";
            EXPECT_EQ(node_->loadedCount.load(), 3u);
        }
        EndChannelActivity(table_.at(node_.get()));
    }
}

TEST_F(ChannelActivityEvents, AreClosedWhereTheSubscriptionFails) {
    Serve();
    Script(L"fail EvtSubscribe code=50");
    const ChannelActivity& activity = StartAndLoad();

    EXPECT_EQ(trace_.WideMessages().front(), L"EvtSubscribe failed for System: 50");
    EXPECT_FALSE(activity.newEventsSignal);
    EXPECT_FALSE(activity.subscription);
    EXPECT_EQ(events_.made.size(), 1u);
    EXPECT_TRUE(events_.open.empty());
    EXPECT_FALSE(CheckNewEvents(table_, node_.get()));
    EXPECT_EQ(node_->loadedCount.load(), 3u);
}

TEST_F(ChannelActivityEvents, OfAnEarlierStartAreClosedWithTheirSubscription) {
    Serve();
    StartAndLoad();
    ResetForLoad(*node_, kWantedOnly);
    const ChannelActivity& activity = StartAndLoad();

    ASSERT_EQ(events_.made.size(), 2u);
    EXPECT_EQ(events_.open, std::vector<HANDLE>{events_.made[1]});
    EXPECT_EQ(activity.newEventsSignal.get(), events_.made[1]);
    EXPECT_EQ(replay::OpenHandles(L"Subscription"), 1u);
    EXPECT_EQ(table_.size(), 1u);
}

TEST_F(ChannelActivityEvents, AreClosedAtTheEnd) {
    Serve();
    EndChannelActivity(StartAndLoad());

    EXPECT_EQ(events_.made.size(), 1u);
    EXPECT_TRUE(events_.open.empty());
}

TEST_F(ChannelActivityTest, ClosesTheOldSubscriptionBeforeItMakesTheNew) {
    Serve();
    StartAndLoad().worker.join();
    ResetForLoad(*node_, L"");
    TakeCalls();
    StartAndLoad();

    const Lines calls = TakeCalls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[0], L"EvtClose(Object=#1)");
    EXPECT_TRUE(calls[1].starts_with(L"EvtSubscribe("));
}

TEST_F(ChannelActivityTest, WaitsForAnEarlierLoaderFirst) {
    Serve();
    Script(
        L"block EvtQuery call=1 until-event=\"tavrin-go\" "
        L"entered-event=\"tavrin-in\"");
    const UniqueKernelHandle go(CreateEventW(nullptr, TRUE, FALSE, L"tavrin-go"));
    const UniqueKernelHandle in(CreateEventW(nullptr, TRUE, FALSE, L"tavrin-in"));
    StartChannelActivity(kWindow, node_, table_);
    ASSERT_EQ(WaitForSingleObject(in.get(), 20'000), WAIT_OBJECT_0);

    std::thread second([this] { StartChannelActivity(kWindow, node_, table_); });
    EXPECT_TRUE(test::HoldsFor(std::chrono::milliseconds(50),
                               [] { return replay::CallsOf(L"EvtSubscribe") == 1; }));
    SetEvent(go.get());
    second.join();

    EXPECT_EQ(replay::CallsOf(L"EvtSubscribe"), 2u);
}

TEST_F(ChannelActivityTest, AFailedSubscriptionIsTracedWithTheChannelsPathEvenUnderAQuery) {
    Serve();
    node_->query = kWantedOnly;
    Script(L"fail EvtSubscribe code=15001");
    StartAndLoad();

    EXPECT_EQ(trace_.WideMessages().front(), L"EvtSubscribe failed for System: 15001");
}

TEST_F(ChannelActivityTest, EndCancelsALongRead) {
    Serve();
    Script(
        L"block EvtNext channel=\"System\" call=2 until-event=\"tavrin-go\" "
        L"entered-event=\"tavrin-in\"");
    const UniqueKernelHandle in(CreateEventW(nullptr, TRUE, FALSE, L"tavrin-in"));
    StartChannelActivity(kWindow, node_, table_);
    ASSERT_EQ(WaitForSingleObject(in.get(), 20'000), WAIT_OBJECT_0);

    EndChannelActivity(table_.at(node_.get()));

    EXPECT_EQ(node_->loadResult.load(), 0u);
    EXPECT_EQ(replay::OpenHandles(), 0u);
}

TEST_F(ChannelActivityTest, EndStopsAPausedLoaderAndEmptiesTheEntry) {
    Serve();
    const auto large = std::make_shared<EventNode>(L"Large", L"Large", 0x006u);
    StartChannelActivity(kWindow, large, table_);
    ASSERT_TRUE(test::WaitUntil([&] { return large->loadedCount.load() >= 10000; }));
    ChannelActivity& activity = table_.at(large.get());

    EndChannelActivity(activity);

    EXPECT_EQ(large->stopRequested.load(), 1u);
    EXPECT_FALSE(activity.worker.joinable());
    EXPECT_FALSE(activity.subscription);
    EXPECT_FALSE(activity.newEventsSignal);
    EXPECT_FALSE(activity.node);
    EXPECT_EQ(large.use_count(), 1);
    EXPECT_EQ(table_.size(), 1u) << "the entry must stay";
    EXPECT_EQ(replay::OpenHandles(), 0u);
}

TEST_F(ChannelActivityTest, EndOfAnEmptyActivityDoesNothing) {
    ChannelActivity empty;

    EndChannelActivity(empty);

    EXPECT_FALSE(empty.worker.joinable());
}

TEST_F(ChannelActivityTest, LeavesTheSubscriptionsOfOtherChannelsOpen) {
    Serve();
    StartAndLoad();
    const auto large = std::make_shared<EventNode>(L"Large", L"Large", 0x006u);
    StartChannelActivity(kWindow, large, table_);

    EXPECT_EQ(replay::OpenHandles(L"Subscription"), 2u);
    EXPECT_TRUE(table_.at(node_.get()).subscription);
}

TEST_F(ChannelActivityTest, AnEventThatArrivesIsNewUntilTheNextStart) {
    Serve();
    StartAndLoad();
    EXPECT_FALSE(CheckNewEvents(table_, node_.get()));

    ASSERT_TRUE(replay::Do(L"arrive channel=\"System\" provider=\"Acme-New\" id=7 level=4"));

    EXPECT_TRUE(test::WaitUntil([this] { return CheckNewEvents(table_, node_.get()); }));
    EXPECT_TRUE(CheckNewEvents(table_, node_.get())) << "the check must not reset the signal";

    EndChannelActivity(table_.at(node_.get()));
    ResetForLoad(*node_, L"");
    StartAndLoad();
    EXPECT_FALSE(CheckNewEvents(table_, node_.get()));
    EXPECT_EQ(node_->loadedCount.load(), 4u);
}

TEST_F(ChannelActivityTest, OnlyEventsThatMatchTheQueryAreNew) {
    Serve();
    node_->query = kWantedOnly;
    StartAndLoad();

    ASSERT_TRUE(replay::Do(L"arrive channel=\"System\" provider=\"Acme-Other\" id=7 level=4"));
    EXPECT_TRUE(test::HoldsFor(std::chrono::milliseconds(50),
                               [this] { return !CheckNewEvents(table_, node_.get()); }));

    ASSERT_TRUE(replay::Do(L"arrive channel=\"System\" provider=\"Acme-Wanted\" id=7 level=4"));
    EXPECT_TRUE(test::WaitUntil([this] { return CheckNewEvents(table_, node_.get()); }));
}

TEST_F(ChannelActivityTest, OnlyALoadedChannelHasNewEvents) {
    Serve();
    ChannelActivity& activity = StartAndLoad();
    SetEvent(activity.newEventsSignal.get());
    ASSERT_TRUE(CheckNewEvents(table_, node_.get()));

    EXPECT_FALSE(CheckNewEvents(table_, nullptr)) << "no node";

    const EventNode unknown(L"Setup", L"Setup", 0x006);
    EXPECT_FALSE(CheckNewEvents(table_, &unknown)) << "a node without an entry";
    EXPECT_EQ(table_.size(), 1u) << "the check must not add an entry";

    node_->flags = 0x041;
    EXPECT_FALSE(CheckNewEvents(table_, node_.get())) << "a folder";
    node_->flags = 0x006;

    node_->loadResult = 15011;
    EXPECT_FALSE(CheckNewEvents(table_, node_.get())) << "a failed load";
    node_->loadResult = 0;

    EXPECT_TRUE(CheckNewEvents(table_, node_.get()));
}

}  // namespace
}  // namespace tavrin::eventlog
