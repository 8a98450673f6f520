#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;
using Ids = std::vector<unsigned long long>;

// A collector's log: forwarded events keep the record ids of their source computers.
class Forwarded : public ReplayTest {
protected:
    void SetUp() override {
        ReplayTest::SetUp();
        recording.WriteEvents(L"Alpha",
                              {{.recordId = 11920}, {.recordId = 1}, {.recordId = 219130}});
        ServeChannels(
            "<channel name='Alpha' type='Admin' owningPublisher='' enabled='true' "
            "forwarded='yes'/>");
    }
};

// Seeks with a bookmark made from a channel and a record id.
DWORD SeekTo(const Handle& results, unsigned long long recordId, DWORD strict = EvtSeekStrict) {
    const Handle bookmark(
        EvtCreateBookmark((L"<BookmarkList><Bookmark Channel='Alpha' RecordId='" +
                           std::to_wstring(recordId) + L"' IsCurrent='true'/></BookmarkList>")
                              .c_str()));
    return ErrorOf(
        EvtSeek(results.get(), 0, bookmark.get(), 0, EvtSeekRelativeToBookmark | strict));
}

// Returns the record id of the event that SeekTo finds, or 0.
unsigned long long Found(unsigned long long recordId) {
    const Handle results = Query(L"Alpha");
    return SeekTo(results, recordId) == ERROR_SUCCESS ? RecordId(NextEvent(results)) : 0;
}

TEST_F(Forwarded, EventsKeepTheRecordIdsOfTheirComputers) {
    EXPECT_EQ(RecordIds(Query(L"Alpha")), (Ids{11920, 1, 219130}));
    EXPECT_EQ(RecordIds(Query(L"Alpha", L"*[System[EventRecordID=219130]]")), Ids{219130});
}

TEST_F(Forwarded, ABookmarkMadeOfARecordIdFindsNothingOrAnotherEvent) {
    EXPECT_EQ(SeekTo(Query(L"Alpha"), 219130), DWORD{ERROR_NOT_FOUND});
    EXPECT_EQ(Found(1), 11920u);
}

TEST_F(Forwarded, BookmarksCountInTheCollectorsLog) {
    const Handle bookmark(EvtCreateBookmark(nullptr));
    const Handle event = NextEvent(Query(L"Alpha", L"*", kReverse));
    ASSERT_TRUE(EvtUpdateBookmark(bookmark.get(), event.get()));
    EXPECT_EQ(Render(bookmark.get(), EvtRenderBookmark),
              L"<BookmarkList Direction='backward'>\r\n  <Bookmark Channel='Alpha' RecordId='3' "
              L"IsCurrent='true'/>\r\n</BookmarkList>");
    EXPECT_EQ(Found(3), 219130u);
}

TEST_F(Forwarded, TheCountContinuesForNewEventsAndAfterClearing) {
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha record=7"));
    recording.AppendEvent(L"Alpha", {.recordId = 8});
    EXPECT_EQ(RecordIds(Query(L"Alpha")), (Ids{11920, 1, 219130, 7, 8}));
    EXPECT_EQ(Found(4), 7u);
    EXPECT_EQ(Found(5), 8u);
    ASSERT_TRUE(replay::Do(L"clear channel=Alpha"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha record=9"));
    EXPECT_EQ(Found(1), 0u);
    EXPECT_EQ(Found(6), 9u);
}

TEST_F(Forwarded, AMissingNumberIsAPositionInTheCollectorsLog) {
    ASSERT_TRUE(replay::Do(L"clear channel=Alpha"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha record=1"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha record=20"));
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(SeekTo(results, 3, 0), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
}

TEST_F(Forwarded, TheOldestRecordIsTheCollectorsFirst) {
    const Handle log(EvtOpenLog(nullptr, L"Alpha", EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(EvtGetLogInfo(log.get(), EvtLogOldestRecordNumber, sizeof value, &value, &used));
    EXPECT_EQ(value.UInt64Val, 1u);
}

}  // namespace
