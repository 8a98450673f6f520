#include "event_log.h"
#include "test_recording.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

using namespace replay_test;
using testing::ElementsAre;
using testing::HasSubstr;

using Faults = ReplayTest;
using Ledger = ReplayTest;
using Calls = ReplayTest;

TEST_F(Faults, OnlyTheNthCallFails) {
    ASSERT_TRUE(replay::Script(L"fail EvtQuery code=15011 call=2"));
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_EVT_QUERY_RESULT_STALE});
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_SUCCESS});
}

TEST_F(Faults, EveryCallFromTheNthOnFails) {
    ASSERT_TRUE(replay::Script(L"fail EvtQuery code=5 from=2"));
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(Faults, OfAChannelAffectOnlyItsCalls) {
    ASSERT_TRUE(
        replay::Script(L"fail EvtQuery code=5 channel=\"beta/operational\"\n"
                       L"fail EvtNext code=6 channel=Alpha call=1\n"
                       L"fail EvtRender code=7 channel=Alpha\n"));
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(QueryError(L"Beta/Operational", L"*"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(
        QueryError(
            nullptr,
            L"<QueryList><Query Path='Beta/Operational'><Select>*</Select></Query></QueryList>"),
        DWORD{ERROR_ACCESS_DENIED});
    const Handle quiet = Query(L"Quiet/Debug");
    EXPECT_TRUE(NextEvent(quiet));
    const Handle alpha = Query(L"Alpha");
    EXPECT_FALSE(NextEvent(alpha));
    const Handle event = NextEvent(alpha);
    EXPECT_TRUE(event);
    EXPECT_EQ(Render(event.get()), L"");
}

TEST_F(Faults, AFailingCallDoesNothing) {
    ASSERT_TRUE(replay::Script(L"fail EvtNext code=1722 call=1"));
    const Handle results = Query(L"Alpha");
    EXPECT_FALSE(NextEvent(results));
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
}

TEST_F(Faults, ADelayedCallTakesItsTime) {
    ASSERT_TRUE(replay::Script(L"delay EvtQuery ms=120"));
    const ULONGLONG before = ::GetTickCount64();
    Query(L"Alpha");
    EXPECT_GE(::GetTickCount64() - before, 100u);
}

TEST_F(Faults, ABlockedCallWaitsForItsEvent) {
    ASSERT_TRUE(replay::Script(
        L"block EvtQuery until-event=replay-test-go entered-event=replay-test-entered"));
    const HANDLE entered = ::CreateEventW(nullptr, TRUE, FALSE, L"replay-test-entered");
    const HANDLE go = ::CreateEventW(nullptr, TRUE, FALSE, L"replay-test-go");
    std::atomic<bool> done{false};
    std::thread caller([&] {
        Query(L"Alpha");
        done = true;
    });
    EXPECT_EQ(::WaitForSingleObject(entered, 5000), DWORD{WAIT_OBJECT_0});
    EXPECT_FALSE(done);
    ::SetEvent(go);
    caller.join();
    EXPECT_TRUE(done);
    ::CloseHandle(entered);
    ::CloseHandle(go);
}

TEST_F(Faults, PaddedValuesNeedALargerBuffer) {
    const Handle event = NextEvent(Query(L"Alpha"));
    const Handle context = SystemContext();
    ASSERT_TRUE(replay::Script(L"pad EvtRender bytes=5000"));
    std::vector<EVT_VARIANT> buffer(256);
    DWORD used = 0;
    DWORD count = 0;
    EXPECT_FALSE(::EvtRender(context.get(), event.get(), EvtRenderEventValues, 4096, buffer.data(),
                             &used, &count));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_GT(used, DWORD{5000});
    buffer.resize(used / sizeof(EVT_VARIANT) + 1);
    EXPECT_TRUE(::EvtRender(context.get(), event.get(), EvtRenderEventValues, used, buffer.data(),
                            &used, &count));
}

TEST_F(Faults, ARecordIdCanBeMadeToDiffer) {
    ASSERT_TRUE(replay::Script(L"record-id EvtRender add=-1"));
    EXPECT_EQ(RecordId(NextEvent(Query(L"Alpha"))), 0u);
}

TEST_F(Faults, ACreationTimeCanBeAnyNumber) {
    ASSERT_TRUE(replay::Script(L"time EvtRender file-time=0xFFFFFFFFFFFFFFFF"));
    const Handle event = NextEvent(Query(L"Alpha"));
    EXPECT_EQ(SystemValues(event.get())[EvtSystemTimeCreated].FileTimeVal, UINT64_MAX);
}

TEST_F(Faults, ALogValueCanBeOfTheWrongType) {
    ASSERT_TRUE(replay::Script(L"type EvtGetLogInfo code=8"));
    const Handle log(::EvtOpenLog(nullptr, L"Alpha", EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(::EvtGetLogInfo(log.get(), EvtLogNumberOfLogRecords, sizeof value, &value, &used));
    EXPECT_EQ(value.Type, DWORD{EvtVarTypeUInt32});
}

TEST_F(Faults, APaceDelaysCallsAndEvents) {
    ASSERT_TRUE(replay::Script(L"pace EvtNext call-us=1000 event-us=5000"));
    const Handle results = Query(L"Alpha");
    LARGE_INTEGER frequency{};
    LARGE_INTEGER before{};
    LARGE_INTEGER after{};
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&before);
    EVT_HANDLE events[4]{};
    DWORD returned = 0;
    ASSERT_TRUE(::EvtNext(results.get(), 4, events, INFINITE, 0, &returned));
    ::QueryPerformanceCounter(&after);
    EXPECT_GE((after.QuadPart - before.QuadPart) * 1000 / frequency.QuadPart, 21);
    for (EVT_HANDLE event : events)
        ::EvtClose(event);
}

constexpr const wchar_t* kWrongLines[] = {
    L"nonsense",
    L"fail EvtQuery",
    L"fail EvtNonsense code=5",
    L"fail code=5",
    L"delay EvtNext",
    L"block EvtNext",
    L"pad EvtRender",
    L"arrive provider=P",
    L"fail EvtQuery code=5 \"open",
    L"channel type=Admin",
    L"pace EvtNone call-us=1",
    L"scan channel=Alpha",
    L"scan EvtNext skip-us=1",
};

TEST_F(Faults, AWrongLineIsRefused) {
    for (const wchar_t* line : kWrongLines)
        EXPECT_FALSE(replay::Script(line)) << testing::PrintToString(std::wstring(line));
    EXPECT_TRUE(
        replay::Script(L"# a comment\n\n  fail EvtQuery code=5 call=100  # behind a line\r\n"));
    EXPECT_TRUE(replay::Script(L""));
}

TEST_F(Ledger, OpenHandlesAreCountedByKind) {
    const Handle results = Query(L"Alpha");
    const Handle first = NextEvent(results);
    const Handle second = NextEvent(results);
    EXPECT_EQ(replay::OpenHandles(), 3u);
    EXPECT_EQ(replay::OpenHandles(L"Query"), 1u);
    EXPECT_EQ(replay::OpenHandles(L"Event"), 2u);
    const auto open = replay::DescribeOpenHandles();
    ASSERT_EQ(open.size(), 3u);
    EXPECT_THAT(open[0], HasSubstr(L"open: Query #"));
    EXPECT_THAT(open[0], HasSubstr(L"Path=\"Alpha\", Query=\"*\", Flags=0x101"));
    EXPECT_THAT(open[1], HasSubstr(L"open: 1 Event from EvtNext (call "));
}

TEST_F(Ledger, ClosingTwiceIsError6AndNoted) {
    const EVT_HANDLE query = ::EvtQuery(nullptr, L"Alpha", L"*", kForward);
    EXPECT_TRUE(::EvtClose(query));
    EXPECT_EQ(ErrorOf(::EvtClose(query)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_THAT(replay::LedgerFaults(), ElementsAre(HasSubstr(L"closed twice: #")));
}

TEST_F(Ledger, UseAfterClosingIsError6AndNoted) {
    const EVT_HANDLE query = ::EvtQuery(nullptr, L"Alpha", L"*", kForward);
    ::EvtClose(query);
    const Handle reused = Query(L"Alpha");  // may reuse the slot, never the handle value
    EXPECT_EQ(ErrorOf(::EvtSeek(query, 0, nullptr, 0, EvtSeekRelativeToFirst)),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_THAT(replay::LedgerFaults(), ElementsAre(HasSubstr(L"used after closing: #")));
}

TEST_F(Ledger, AHandleOfTheWrongKindIsError6AndNoted) {
    const Handle context = SystemContext();
    EXPECT_EQ(ErrorOf(::EvtSeek(context.get(), 0, nullptr, 0, EvtSeekRelativeToFirst)),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_THAT(replay::LedgerFaults(), ElementsAre(HasSubstr(L"wrong kind: RenderContext #")));
}

TEST_F(Ledger, AnInvalidHandleIsError6AndReported) {
    for (const std::uintptr_t value : {std::uintptr_t{0}, std::uintptr_t{4}, ~std::uintptr_t{0}})
        EXPECT_EQ(ErrorOf(::EvtClose(reinterpret_cast<EVT_HANDLE>(value))),
                  DWORD{ERROR_INVALID_HANDLE});
    EXPECT_THAT(replay::LedgerFaults(), ElementsAre(HasSubstr(L"never opened: NULL"),
                                                    HasSubstr(L"never opened: foreign:0x4"),
                                                    HasSubstr(L"never opened: #")));
}

TEST_F(Calls, AreLoggedWithArgumentsResultAndError) {
    replay::StartCallLog();
    const EVT_HANDLE query =
        ::EvtQuery(nullptr, L"Alpha", L"*[System[Provider[@Name=\"a\\b\"]]]", 0x201);
    ::EvtSeek(query, -3, nullptr, 0, EvtSeekRelativeToLast);
    EVT_HANDLE event = nullptr;
    DWORD returned = 0;
    ::EvtNext(query, 1, &event, INFINITE, 0, &returned);
    ::EvtClose(query);
    const auto calls = replay::TakeCallLog();
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0].Text(),
              L"EvtQuery(Session=NULL, Path=\"Alpha\", "
              L"Query=\"*[System[Provider[@Name=\\\"a\\\\b\\\"]]]\", Flags=0x201)");
    const std::wstring handle = calls[0].result;
    EXPECT_EQ(calls[1].Text(), L"EvtSeek(ResultSet=" + handle +
                                   L", Position=-3, Bookmark=NULL, Timeout=0, Flags=0x2)");
    EXPECT_EQ(calls[1].result, L"TRUE");
    EXPECT_EQ(calls[2].Text(),
              L"EvtNext(ResultSet=" + handle +
                  L", EventArraySize=1, EventArray=set, Timeout=INFINITE, Flags=0x0)");
    EXPECT_EQ(calls[2].result, L"FALSE");
    EXPECT_EQ(calls[2].error, DWORD{ERROR_NO_MORE_ITEMS});
    EXPECT_EQ(calls[3].Text(), L"EvtClose(Object=" + handle + L")");
    EXPECT_EQ(calls[3].threadId, ::GetCurrentThreadId());
    EXPECT_LT(calls[0].sequence, calls[3].sequence);
}

TEST_F(Calls, OfSelectedFunctionsAreLogged) {
    ASSERT_TRUE(replay::Script(L"log EvtSeek\nlog EvtClose"));
    replay::StartCallLog();
    const EVT_HANDLE query = ::EvtQuery(nullptr, L"Alpha", L"*", EvtQueryChannelPath);
    ::EvtSeek(query, 0, nullptr, 0, EvtSeekRelativeToFirst);
    ASSERT_TRUE(replay::Script(L""));
    ::EvtClose(query);
    Query(L"None");
    const auto calls = replay::TakeCallLog();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].function, L"EvtSeek");
    EXPECT_EQ(calls[1].function, L"EvtClose");
    EXPECT_EQ(calls[2].function, L"EvtQuery") << "without a script every function is logged";
}

TEST_F(Calls, AreCountedByFunction) {
    const auto before = replay::CallsOf(L"EvtQuery");
    Query(L"Alpha");
    Query(L"None");
    EXPECT_EQ(replay::CallsOf(L"EvtQuery"), before + 2);
}

TEST_F(Calls, OfManyThreadsAreSafe) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round)
                EXPECT_EQ(RecordIds(Query(L"Alpha")).size(), 4u);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(replay::LedgerFaults(), std::vector<std::wstring>());
}

}  // namespace
