#include "event_log.h"
#include "support/wait_until.h"
#include "test_recording.h"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <utility>

namespace {

using namespace replay_test;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

// Much longer than a cancelled read takes and much shorter than the 10 s of an uncancelled one.
constexpr auto kAtOnce = 2s;

// The outcome of a read on another thread.
struct Outcome {
    DWORD error = ERROR_SUCCESS;
    std::vector<unsigned long long> recordIds;
};

Outcome ReadPage(EVT_HANDLE results) {
    EVT_HANDLE handles[16]{};
    DWORD returned = 0;
    const BOOL read = EvtNext(results, 16, handles, INFINITE, 0, &returned);
    Outcome outcome{ErrorOf(read), {}};
    for (DWORD i = 0; i < returned; ++i) {
        outcome.recordIds.push_back(RecordId(Handle(handles[i])));
    }
    return outcome;
}

class Cancelling : public ReplayTest {
protected:
    // Starts `work` on another thread. Returns once it has called this function.
    template <typename Work>
    static std::future<Outcome> Start(const wchar_t* function, Work work) {
        const auto before = replay::CallsOf(function);
        auto outcome = std::async(std::launch::async, work);
        EXPECT_TRUE(tavrin::test::WaitUntil([&] { return replay::CallsOf(function) != before; }));
        return outcome;
    }
    static std::future<Outcome> StartRead(const Handle& results) {
        return Start(L"EvtNext", [&results] { return ReadPage(results.get()); });
    }

    // Cancels the pending call on the handle, which must return at once.
    static Outcome Cancel(const Handle& handle, std::future<Outcome> call) {
        EXPECT_TRUE(EvtCancel(handle.get()));
        EXPECT_EQ(call.wait_for(kAtOnce), std::future_status::ready);
        return call.get();
    }
    static Outcome CancelRead(const Handle& results) { return Cancel(results, StartRead(results)); }
};

// Each line makes a read of Alpha take 10 s or longer.
constexpr const wchar_t* kLongReads[] = {
    L"delay EvtNext ms=10000",
    L"block EvtNext until-event=replay-test-never",
    L"pace EvtNext call-us=10000000",
    L"pace EvtNext event-us=10000000",
    L"scan skip-us=10000000 channel=Alpha",
};

TEST_F(Cancelling, AReadEndsAtOnceWith1223WhateverItWaitsFor) {
    for (const wchar_t* line : kLongReads) {
        ASSERT_TRUE(replay::Script(line));
        const Handle results = Query(L"Alpha", L"*[System[EventRecordID=7]]");
        const Outcome outcome = CancelRead(results);
        EXPECT_EQ(outcome.error, DWORD{ERROR_CANCELLED}) << testing::PrintToString(line);
        EXPECT_TRUE(outcome.recordIds.empty());
        replay::Script(L"");
    }
    EXPECT_EQ(replay::OpenHandles(L"Event"), 0u);
}

TEST_F(Cancelling, ALongScanEndsAtOnce) {
    ASSERT_TRUE(
        replay::Script(L"channel name=Big events=2000000\n"
                       L"scan skip-us=10 channel=Big"));
    const Handle results = Query(L"Big", L"*[System[EventRecordID=1]]", kReverse);
    auto read = StartRead(results);
    EXPECT_EQ(read.wait_for(100ms), std::future_status::timeout)
        << "an uncancelled scan takes 20 s";
    EXPECT_EQ(Cancel(results, std::move(read)).error, DWORD{ERROR_CANCELLED});
}

TEST_F(Cancelling, AScanTakesTimeForEachSkippedEvent) {
    ASSERT_TRUE(replay::Script(L"scan skip-us=50000 channel=alpha"));
    const Handle wanted = Query(L"Alpha", L"*[System[EventRecordID=7]]");
    const Handle other = Query(L"Quiet/Debug", L"*[System[EventRecordID=7]]");
    auto begin = Clock::now();
    EXPECT_THAT(ReadPage(wanted.get()).recordIds, ElementsAre(7u));
    EXPECT_GE(Clock::now() - begin, 3 * 50ms);
    replay::Script(L"scan skip-us=10000000 channel=Alpha");
    begin = Clock::now();
    EXPECT_EQ(ReadPage(other.get()).error, DWORD{ERROR_NO_MORE_ITEMS}) << "another channel";
    EXPECT_THAT(ReadPage(Query(L"Alpha").get()).recordIds, ElementsAre(1u, 2u, 4u, 7u))
        << "nothing is skipped";
    EXPECT_LT(Clock::now() - begin, kAtOnce);
}

TEST_F(Cancelling, SkippedEventsAreNotScannedAgain) {
    ASSERT_TRUE(replay::Script(L"scan skip-us=50000"));
    const Handle results = Query(L"Alpha", L"*[System[EventRecordID=1]]");
    EXPECT_THAT(ReadPage(results.get()).recordIds, ElementsAre(1u));
    replay::Script(L"scan skip-us=10000000");
    const auto begin = Clock::now();
    EXPECT_EQ(ReadPage(results.get()).error, DWORD{ERROR_NO_MORE_ITEMS});
    EXPECT_LT(Clock::now() - begin, kAtOnce);
}

TEST_F(Cancelling, ACancelledReadMovesNothing) {
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
    for (const wchar_t* line : {L"delay EvtNext ms=10000", L"pace EvtNext event-us=10000000"}) {
        ASSERT_TRUE(replay::Script(line));
        EXPECT_EQ(CancelRead(results).error, DWORD{ERROR_CANCELLED});
    }
    replay::Script(L"");
    EXPECT_THAT(ReadPage(results.get()).recordIds, ElementsAre(2u, 4u, 7u));
}

TEST_F(Cancelling, WithoutAPendingCallChangesNothing) {
    const Handle results = Query(L"Alpha");
    const Handle context = SystemContext();
    EXPECT_TRUE(EvtCancel(results.get()));
    EXPECT_TRUE(EvtCancel(context.get()));
    EXPECT_THAT(ReadPage(results.get()).recordIds, ElementsAre(1u, 2u, 4u, 7u));
}

TEST_F(Cancelling, AffectsOnlyTheReadsOfItsHandle) {
    ASSERT_TRUE(
        replay::Script(L"delay EvtNext ms=200 channel=Alpha\n"
                       L"delay EvtNext ms=10000 channel=Quiet/Debug"));
    const Handle cancelled = Query(L"Quiet/Debug");
    const Handle other = Query(L"Alpha");
    auto read = StartRead(other);
    EXPECT_EQ(CancelRead(cancelled).error, DWORD{ERROR_CANCELLED});
    EXPECT_THAT(read.get().recordIds, ElementsAre(1u, 2u, 4u, 7u));
}

TEST_F(Cancelling, ASeekEndsAtOnceAndMovesNothing) {
    const Handle results = Query(L"Alpha", L"*[System[EventRecordID=1 or EventRecordID=7]]");
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
    for (const wchar_t* line : {L"delay EvtSeek ms=10000", L"scan skip-us=10000000"}) {
        ASSERT_TRUE(replay::Script(line));
        auto seek = Start(L"EvtSeek", [&results] {
            return Outcome{ErrorOf(EvtSeek(results.get(), 1, nullptr, 0, EvtSeekRelativeToFirst)),
                           {}};
        });
        EXPECT_EQ(Cancel(results, std::move(seek)).error, DWORD{ERROR_CANCELLED});
    }
    replay::Script(L"");
    EXPECT_THAT(ReadPage(results.get()).recordIds, ElementsAre(7u));
}

TEST_F(Cancelling, ASubscriptionsReadEndsAtOnce) {
    const HANDLE signal = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    const Handle subscription(EvtSubscribe(nullptr, signal, L"Alpha", L"*", nullptr, nullptr,
                                           nullptr, EvtSubscribeStartAtOldestRecord));
    ASSERT_TRUE(replay::Script(L"pace EvtNext event-us=10000000"));
    EXPECT_EQ(CancelRead(subscription).error, DWORD{ERROR_CANCELLED});
    replay::Script(L"");
    EXPECT_THAT(ReadPage(subscription.get()).recordIds, ElementsAre(1u, 2u, 4u, 7u));
    CloseHandle(signal);
}

TEST_F(Cancelling, IsPossibleWhileAChannelsRulesApply) {
    ASSERT_TRUE(
        replay::Script(L"scan skip-us=10000000 channel=Alpha\n"
                       L"fail EvtCancel code=5 channel=Beta/Operational"));
    const Handle results = Query(L"Alpha", L"*[System[EventRecordID=7]]");
    EXPECT_EQ(CancelRead(results).error, DWORD{ERROR_CANCELLED});
}

TEST_F(Cancelling, IsCountedLoggedAndScripted) {
    const auto before = replay::CallsOf(L"EvtCancel");
    ASSERT_TRUE(replay::Script(L"fail EvtCancel code=5 call=1\nlog EvtCancel"));
    replay::StartCallLog();
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(ErrorOf(EvtCancel(results.get())), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(EvtCancel(results.get()));
    EXPECT_EQ(replay::CallsOf(L"EvtCancel"), before + 2);
    const auto calls = replay::TakeCallLog();
    replay::StopCallLog();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_THAT(calls[1].Text(), HasSubstr(L"EvtCancel(Object=#"));
    EXPECT_EQ(calls[1].result, L"TRUE");
}

TEST_F(Cancelling, AClosedHandleIsError6AndNoted) {
    const EVT_HANDLE query = EvtQuery(nullptr, L"Alpha", L"*", kForward);
    EvtClose(query);
    EXPECT_EQ(ErrorOf(EvtCancel(query)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_THAT(replay::LedgerFaults(), ElementsAre(HasSubstr(L"used after closing: #")));
}

}  // namespace
