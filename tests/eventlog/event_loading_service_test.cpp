#include "eventlog/loading/event_loading.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "eventlog/records/event_record.h"
#include "eventlog/service/evt_handle.h"
#include "replay/replay_control.h"
#include "support/fresh_thread.h"
#include "support/message_of.h"
#include "support/trace_capture.h"
#include "support/wait_until.h"

#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kStructuredQuery =
    L"<QueryList><Query Id='0' Path='System'><Select Path='System'>*[System[Provider["
    L"@Name=&quot;Acme-Wanted&quot;]]]</Select></Query></QueryList>";

class LoadChannelEventsTest : public ServiceTest {
protected:
    LoadChannelEventsTest() { recording_.AddChannel({.name = L"System"}); }

    // Runs one step on a fresh thread with a new query slot.
    std::int32_t LoadOnce() {
        std::int32_t result = 99;
        test::OnFreshThread([&] {
            UniqueEvt query;
            result = LoadChannelEvents(node_, query);
            queryLeftOpen_ = static_cast<bool>(query);
        });
        return result;
    }

    // Repeats the step with one query until the end or a failure.
    std::vector<std::int32_t> LoadAll() {
        std::vector<std::int32_t> results;
        test::OnFreshThread([&] {
            UniqueEvt query;
            do {
                results.push_back(LoadChannelEvents(node_, query));
            } while (results.back() >= 0 && node_.done.load() == 0);
            queryLeftOpen_ = static_cast<bool>(query);
        });
        return results;
    }

    EventNode node_{L"System", L"System", 0x006};
    bool queryLeftOpen_ = false;
    test::TraceCapture trace_;
};

TEST_F(LoadChannelEventsTest, RefusesAFolderWithoutACall) {
    Serve();
    EventNode folder(L"Windows Logs", L"Windows-Logs", 0x041);
    UniqueEvt query;

    EXPECT_EQ(test::MessageOf<std::logic_error>(
                  [&] { static_cast<void>(LoadChannelEvents(folder, query)); }),
              "Windows-Logs is not a channel!");

    EXPECT_TRUE(TakeCalls().empty());
    EXPECT_EQ(folder.loadResult.load(), 0u);
}

TEST_F(LoadChannelEventsTest, NamesTheRefusedFolderInUtf8) {
    EventNode folder(L"\x65e5", L"\x65e5\x00e9", 0x041);
    UniqueEvt query;

    EXPECT_EQ(test::MessageOf<std::logic_error>(
                  [&] { static_cast<void>(LoadChannelEvents(folder, query)); }),
              "\xe6\x97\xa5\xc3\xa9 is not a channel!");
}

TEST_F(LoadChannelEventsTest, AsksTheServiceForTheNewestFirst) {
    recording_.WriteEvents(L"System", test::Events(1));
    Serve();

    EXPECT_EQ(LoadOnce(), 1);

    EXPECT_EQ(TakeCalls(),
              (Lines{
                  L"EvtQuery(Session=NULL, Path=\"System\", Query=\"*\", Flags=0x201)",
                  L"EvtSeek(ResultSet=#1, Position=0, Bookmark=NULL, Timeout=0, Flags=0x1)",
                  L"EvtNext(ResultSet=#1, EventArraySize=128, EventArray=set, Timeout=INFINITE, "
                  L"Flags=0x0)",
                  L"EvtCreateRenderContext(ValuePathsCount=0, ValuePaths=NULL, Flags=0x1)",
                  L"EvtRender(Context=#2, Fragment=#3, Flags=0x0, BufferSize=4096, Buffer=set)",
                  L"EvtClose(Object=#3)",
                  L"EvtClose(Object=#1)",
                  L"EvtClose(Object=#2)",
              }));
}

TEST_F(LoadChannelEventsTest, AsksWithTheNodesQueryAndNoPath) {
    recording_.WriteEvents(L"System", {{.recordId = 1, .provider = L"Acme-Wanted"},
                                       {.recordId = 2, .provider = L"Acme-Other"}});
    Serve();
    node_.query = kStructuredQuery;

    EXPECT_EQ(LoadOnce(), 1);

    EXPECT_EQ(TakeCallsOf(L"EvtQuery"), Lines{L"EvtQuery(Session=NULL, Path=NULL, Query=\"" +
                                              kStructuredQuery + L"\", Flags=0x201)"});
    EXPECT_EQ(node_.recordList[0]->recordId, 1u);
}

TEST_F(LoadChannelEventsTest, AppendsTheNewestFirst) {
    recording_.WriteEvents(L"System", test::Events(3));
    Serve();

    EXPECT_EQ(LoadOnce(), 3);

    ASSERT_EQ(node_.recordList.size(), 3u);
    EXPECT_EQ(node_.recordList[0]->recordId, 3u);
    EXPECT_EQ(node_.recordList[1]->recordId, 2u);
    EXPECT_EQ(node_.recordList[2]->recordId, 1u);
    EXPECT_EQ(node_.loadedCount.load(), 3u);
}

TEST_F(LoadChannelEventsTest, GoesOnWithTheSameQueryPageByPage) {
    recording_.WriteEvents(L"System", test::Events(300));
    Serve();

    EXPECT_EQ(LoadAll(), (std::vector<std::int32_t>{128, 128, 44, 0}));

    EXPECT_EQ(node_.recordList.size(), 300u);
    EXPECT_EQ(node_.loadedCount.load(), 300u);
    EXPECT_EQ(node_.recordList[0]->recordId, 300u);
    EXPECT_EQ(node_.recordList[299]->recordId, 1u);
    EXPECT_EQ(replay::CallsOf(L"EvtQuery"), 1u);
    EXPECT_EQ(replay::CallsOf(L"EvtSeek"), 1u);
    EXPECT_EQ(replay::CallsOf(L"EvtNext"), 4u);
    EXPECT_EQ(replay::CallsOf(L"EvtCreateRenderContext"), 1u);
    EXPECT_EQ(replay::CallsOf(L"EvtRender"), 300u);
    EXPECT_EQ(trace_.WideMessages(), (Lines{L"Loaded 128 events to channel: System",
                                            L"Loaded 128 events to channel: System",
                                            L"Loaded 44 events to channel: System"}));
}

TEST_F(LoadChannelEventsTest, AtTheEndIsDoneWithTheQueryStillOpen) {
    Serve();

    EXPECT_EQ(LoadOnce(), 0);

    EXPECT_EQ(node_.done.load(), 1u);
    EXPECT_TRUE(queryLeftOpen_);
    EXPECT_EQ(node_.loadResult.load(), 0u);
    EXPECT_EQ(node_.loadedCount.load(), 0u);
    EXPECT_TRUE(trace_.WideMessages().empty());
}

TEST_F(LoadChannelEventsTest, BeforeTheEndIsNotDone) {
    recording_.WriteEvents(L"System", test::Events(1));
    Serve();

    EXPECT_EQ(LoadOnce(), 1);

    EXPECT_EQ(node_.done.load(), 0u);
    EXPECT_TRUE(queryLeftOpen_);
}

TEST_F(LoadChannelEventsTest, AFailedQueryLeavesItsCode) {
    Serve();
    for (const wchar_t* code : {L"5", L"15007", L"15022", L"1722"}) {
        Script(std::wstring(L"fail EvtQuery code=") + code);

        EXPECT_EQ(LoadOnce(), -1);

        EXPECT_EQ(std::to_wstring(node_.loadResult.load()), code);
        EXPECT_FALSE(queryLeftOpen_);
    }
    EXPECT_EQ(replay::CallsOf(L"EvtSeek"), 0u);
    EXPECT_EQ(node_.done.load(), 0u);
}

TEST_F(LoadChannelEventsTest, AFailedSeekLeavesItsCodeAndClosesTheQuery) {
    Serve();
    Script(L"fail EvtSeek code=15011");

    EXPECT_EQ(LoadOnce(), -1);

    EXPECT_EQ(node_.loadResult.load(), 15011u);
    EXPECT_FALSE(queryLeftOpen_);
    EXPECT_EQ(replay::CallsOf(L"EvtNext"), 0u);
}

TEST_F(LoadChannelEventsTest, AFailedPageLeavesItsCodeAndWhatWasLoadedBefore) {
    recording_.WriteEvents(L"System", test::Events(300));
    Serve();
    Script(L"fail EvtNext code=15011 call=2");

    EXPECT_EQ(LoadAll(), (std::vector<std::int32_t>{128, -1}));

    EXPECT_EQ(node_.loadResult.load(), 15011u);
    EXPECT_FALSE(queryLeftOpen_);
    EXPECT_EQ(node_.recordList.size(), 128u);
    EXPECT_EQ(node_.loadedCount.load(), 128u);
    EXPECT_EQ(node_.done.load(), 0u);
    EXPECT_EQ(trace_.WideMessages(),
              (Lines{L"Loaded 128 events to channel: System", L"EvtNext failed with 15011"}));
}

TEST_F(LoadChannelEventsTest, AnEventThatCannotBeRenderedIsSkipped) {
    recording_.WriteEvents(L"System", test::Events(3));
    Serve();
    // The second newest event needs a larger buffer and then fails.
    Script(L"fail EvtRender code=122 call=2\nfail EvtRender code=1722 call=3");

    EXPECT_EQ(LoadOnce(), 2);

    ASSERT_EQ(node_.recordList.size(), 2u);
    EXPECT_EQ(node_.recordList[0]->recordId, 3u);
    EXPECT_EQ(node_.recordList[1]->recordId, 1u);
    EXPECT_EQ(node_.loadedCount.load(), 2u);
    EXPECT_EQ(trace_.NarrowMessages(), Lines{L"EvtRender failed: 1722"});
    EXPECT_EQ(trace_.WideMessages(), Lines{L"Loaded 3 events to channel: System"});
}

TEST_F(LoadChannelEventsTest, APageWithoutARenderedEventIsNotTheEnd) {
    recording_.WriteEvents(L"System", test::Events(130));
    Serve();
    Script(L"fail EvtCreateRenderContext code=8");

    EXPECT_EQ(LoadAll(), (std::vector<std::int32_t>{0, 0, 0}));

    EXPECT_EQ(node_.loadedCount.load(), 0u);
    EXPECT_EQ(node_.loadResult.load(), 0u);
    EXPECT_EQ(replay::CallsOf(L"EvtNext"), 3u);
    EXPECT_EQ(trace_.NarrowMessages().size(), 130u);
    EXPECT_EQ(trace_.NarrowMessages()[0], L"EvtCreateRenderContext failed");
}

TEST_F(LoadChannelEventsTest, IgnoresTheStatusOfARender) {
    recording_.WriteEvents(L"System", test::Events(3));
    Serve();
    Script(L"fail EvtRender code=5 call=2");

    EXPECT_EQ(LoadOnce(), 3);

    ASSERT_EQ(node_.recordList.size(), 3u);
    EXPECT_EQ(node_.recordList[1]->recordId, 3u) << "must repeat the previous event's values";
    EXPECT_TRUE(trace_.NarrowMessages().empty());
}

TEST_F(LoadChannelEventsTest, RendersEventsThatNeedMoreThanTheFirstBufferInTwoCalls) {
    recording_.WriteEvents(L"System", test::Events(2));
    Serve();
    Script(L"pad EvtRender bytes=5000");

    EXPECT_EQ(LoadOnce(), 2);

    ASSERT_EQ(node_.recordList.size(), 2u);
    EXPECT_EQ(node_.recordList[0]->recordId, 2u);
    EXPECT_EQ(std::wstring(node_.recordList[1]->providerName), L"Test-Provider");
    EXPECT_EQ(replay::CallsOf(L"EvtRender"), 3u);
}

TEST_F(LoadChannelEventsTest, LocksTheRecordListOnlyToHandRecordsOver) {
    recording_.WriteEvents(L"System", test::Events(5));
    Serve();
    std::thread loader;
    {
        const std::lock_guard lock(node_.recordListMutex);
        loader = std::thread([this] {
            UniqueEvt query;
            EXPECT_EQ(LoadChannelEvents(node_, query), 5);
        });
        // The loader renders the whole page although this thread holds the list's mutex.
        EXPECT_TRUE(test::WaitUntil([] { return replay::CallsOf(L"EvtClose") >= 5; }));
        EXPECT_TRUE(node_.recordList.empty());
        EXPECT_EQ(node_.loadedCount.load(), 0u);
    }
    loader.join();
    EXPECT_EQ(node_.recordList.size(), 5u);
}

TEST_F(LoadChannelEventsTest, ReadsAllOfAnEvent) {
    recording_.WriteEvents(L"System", {{.recordId = 7,
                                        .provider = L"Acme-Foo",
                                        .eventId = 4625,
                                        .level = 0,
                                        .keywords = 0x8010000000000000,
                                        .processId = 4294967295}});
    Serve();

    EXPECT_EQ(LoadOnce(), 1);

    ASSERT_EQ(node_.recordList.size(), 1u);
    const EventRecord& record = *node_.recordList[0];
    EXPECT_EQ(record.recordId, 7u);
    EXPECT_EQ(std::wstring(record.providerName), L"Acme-Foo");
    EXPECT_EQ(record.source, L"Foo");
    EXPECT_EQ(record.eventId, 4625u);
    EXPECT_EQ(record.level, 7u);
    EXPECT_EQ(record.keywords, 0x8010000000000000u);
    EXPECT_EQ(record.processId, L"4294967295");
}

TEST_F(LoadChannelEventsTest, AFetchedPageLeavesTheNodesListAlone) {
    recording_.WriteEvents(L"System", test::Events(3));
    Serve();
    test::OnFreshThread([this] {
        const UniqueEvt query(EvtQuery(nullptr, L"System", L"*", 0x201));
        EventRecordList page;
        EXPECT_EQ(FetchEventBatch(node_, query.get(), page), 3);
        EXPECT_EQ(page.size(), 3u);
        EXPECT_EQ(FetchEventBatch(node_, query.get(), page), 0);
        EXPECT_EQ(page.size(), 3u);
    });

    EXPECT_TRUE(node_.recordList.empty());
    EXPECT_EQ(node_.loadedCount.load(), 0u);
    EXPECT_EQ(node_.done.load(), 1u);
}

}  // namespace
}  // namespace tavrin::eventlog
