#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;

using Seeking = ReplayTest;

constexpr DWORD kFirst = EvtSeekRelativeToFirst;
constexpr DWORD kLast = EvtSeekRelativeToLast;
constexpr DWORD kCurrent = EvtSeekRelativeToCurrent;
constexpr DWORD kMark = EvtSeekRelativeToBookmark;
constexpr DWORD kStrict = EvtSeekStrict;

struct SeekCase {
    DWORD queryFlags;
    DWORD origin;
    LONGLONG offset;
    unsigned long long next;  // the record that is read after the seek
};

// The log holds the records 1, 2, 4 and 7.
constexpr SeekCase kSeeks[] = {
    {kForward, kFirst, 0, 1},  {kForward, kFirst, 2, 4},  {kForward, kFirst, 3, 7},
    {kForward, kFirst, 99, 7}, {kForward, kFirst, -1, 1}, {kForward, kLast, 0, 7},
    {kForward, kLast, -1, 4},  {kForward, kLast, -99, 1}, {kForward, kLast, 1, 7},
    {kReverse, kFirst, 0, 7},  {kReverse, kFirst, 1, 4},  {kReverse, kLast, 0, 1},
    {kReverse, kLast, -1, 2},  {kReverse, kFirst, 99, 1},
};

TEST_F(Seeking, FromEitherEndCountsInTheDirectionOfTheQuery) {
    for (const SeekCase& seek : kSeeks) {
        const Handle results = Query(L"Alpha", L"*", seek.queryFlags);
        ASSERT_TRUE(::EvtSeek(results.get(), seek.offset, nullptr, 0, seek.origin));
        EXPECT_EQ(RecordId(NextEvent(results)), seek.next)
            << seek.queryFlags << " " << seek.origin << " " << seek.offset;
    }
}

TEST_F(Seeking, AFilteredQueryCountsItsOwnEvents) {
    const Handle results = Query(L"Alpha", L"*[System[Provider[@Name='Alder']]]");
    ASSERT_TRUE(::EvtSeek(results.get(), 1, nullptr, 0, kFirst));
    EXPECT_EQ(RecordId(NextEvent(results)), 4u);
    ASSERT_TRUE(::EvtSeek(results.get(), -1, nullptr, 0, kLast));
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
}

TEST_F(Seeking, TheCurrentPositionIsTheEventReadNext) {
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
    ASSERT_TRUE(::EvtSeek(results.get(), 1, nullptr, 0, kCurrent));
    EXPECT_EQ(RecordId(NextEvent(results)), 4u);
    ASSERT_TRUE(::EvtSeek(results.get(), -2, nullptr, 0, kCurrent));
    EXPECT_EQ(RecordId(NextEvent(results)), 2u);
}

TEST_F(Seeking, AStrictSeekBeyondAnEndIs1168AndMovesNothing) {
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(RecordId(NextEvent(results)), 1u);
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 4, nullptr, 0, kFirst | kStrict)),
              DWORD{ERROR_NOT_FOUND});
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), -1, nullptr, 0, kFirst | kStrict)),
              DWORD{ERROR_NOT_FOUND});
    EXPECT_EQ(RecordId(NextEvent(results)), 2u);
}

TEST_F(Seeking, TheBeginningOfAnEmptyResultCanBeSought) {
    const Handle results = Query(L"Beta/Operational", L"*", kReverse);
    EXPECT_TRUE(::EvtSeek(results.get(), 0, nullptr, 0, kFirst));
    EXPECT_FALSE(NextEvent(results));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
}

TEST_F(Seeking, FlagsAndTimeoutAreChecked) {
    const Handle results = Query(L"Alpha");
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 0, nullptr, 0, 0)), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 0, nullptr, 1, kFirst)),
              DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 0, nullptr, 0, kMark)), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(replay::LedgerFaults().size(), 1u);
}

Handle BookmarkAt(const std::wstring& channel, unsigned long long recordId) {
    return Handle(
        ::EvtCreateBookmark((L"<BookmarkList><Bookmark Channel='" + channel + L"' RecordId='" +
                             std::to_wstring(recordId) + L"' IsCurrent='true'/></BookmarkList>")
                                .c_str()));
}

struct MarkCase {
    DWORD queryFlags;
    unsigned long long bookmarked;
    LONGLONG offset;
    unsigned long long next;
};
constexpr MarkCase kMarks[] = {
    {kForward, 4, 0, 4},
    {kForward, 4, 1, 7},
    {kForward, 4, -1, 2},
    {kReverse, 4, 0, 4},
    {kReverse, 4, 1, 2},
    {kReverse, 4, -1, 7},
    // A missing record is a position between its neighbours.
    {kForward, 3, 0, 4},
    {kForward, 3, 1, 4},
    {kForward, 3, -1, 2},
    {kReverse, 3, 0, 2},
    {kReverse, 3, 1, 2},
    {kReverse, 3, -1, 4},
    {kForward, 99, 0, 7},
    {kReverse, 99, 0, 7},
};

TEST_F(Seeking, FromABookmark) {
    for (const MarkCase& mark : kMarks) {
        const Handle results = Query(L"Alpha", L"*", mark.queryFlags);
        const Handle bookmark = BookmarkAt(L"Alpha", mark.bookmarked);
        ASSERT_TRUE(::EvtSeek(results.get(), mark.offset, bookmark.get(), 0, kMark));
        EXPECT_EQ(RecordId(NextEvent(results)), mark.next)
            << mark.queryFlags << " " << mark.bookmarked << " " << mark.offset;
    }
}

TEST_F(Seeking, AStrictSeekToAMissingBookmarkedRecordIs1168) {
    const Handle results = Query(L"Alpha");
    const Handle bookmark = BookmarkAt(L"Alpha", 3);
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 0, bookmark.get(), 0, kMark | kStrict)),
              DWORD{ERROR_NOT_FOUND});
}

TEST_F(Seeking, AStrictSeekFindsEveryRecord) {
    for (const RecordedEvent& event : AlphaEvents()) {
        const Handle results = Query(L"Alpha");
        const Handle bookmark = BookmarkAt(L"Alpha", event.recordId);
        ASSERT_TRUE(::EvtSeek(results.get(), 0, bookmark.get(), 0, kMark | kStrict));
        EXPECT_EQ(RecordId(NextEvent(results)), event.recordId);
    }
}

TEST_F(Seeking, RecordIdsThatStepBackAreFound) {
    ServeAlpha({{.recordId = 5}, {.recordId = 3}, {.recordId = 9}});
    const Handle results = Query(L"Alpha");
    const Handle bookmark = BookmarkAt(L"Alpha", 3);
    ASSERT_TRUE(::EvtSeek(results.get(), 0, bookmark.get(), 0, kMark | kStrict));
    EXPECT_EQ(RecordId(NextEvent(results)), 3u);
}

TEST_F(Seeking, ABookmarkOfAnotherChannelIs1168) {
    const Handle results = Query(L"Alpha");
    const Handle bookmark = BookmarkAt(L"Beta/Operational", 1);
    EXPECT_EQ(ErrorOf(::EvtSeek(results.get(), 0, bookmark.get(), 0, kMark | kStrict)),
              DWORD{ERROR_NOT_FOUND});
}

TEST_F(Seeking, ABookmarkMovesAllChannelsOfAQuery) {
    recording.WriteEvents(L"Beta/Operational",
                          {{.recordId = 50, .time = L"2024-03-01T08:00:01.0000000Z"},
                           {.recordId = 51, .time = L"2024-03-01T08:30:00.0000000Z"}});
    Serve();
    const Handle results = Query(nullptr,
                                 L"<QueryList><Query><Select Path='Alpha'>*</Select>"
                                 L"<Select Path='Beta/Operational'>*</Select></Query></QueryList>");
    const Handle bookmark = BookmarkAt(L"Alpha", 4);
    ASSERT_TRUE(::EvtSeek(results.get(), 0, bookmark.get(), 0, kMark | kStrict));
    EXPECT_EQ(RecordIds(results), (std::vector<unsigned long long>{4, 51, 7}));
}

TEST_F(Seeking, ABookmarkOfAReverseQueryPointsBackward) {
    const Handle bookmark(::EvtCreateBookmark(nullptr));
    const Handle event = NextEvent(Query(L"Alpha", L"*", kReverse));
    ASSERT_TRUE(::EvtUpdateBookmark(bookmark.get(), event.get()));
    EXPECT_EQ(Render(bookmark.get(), EvtRenderBookmark),
              L"<BookmarkList Direction='backward'>\r\n  <Bookmark Channel='Alpha' RecordId='7' "
              L"IsCurrent='true'/>\r\n</BookmarkList>");
}

constexpr const wchar_t* kBadBookmarks[] = {
    L"",
    L"nothing",
    L"<BookmarkList>",
    L"<Bookmark Channel='A' RecordId='1'/>",
    L"<BookmarkList><Bookmark Channel='A' RecordId='x'/></BookmarkList>",
};

TEST_F(Seeking, AMalformedBookmarkIs15008) {
    for (const wchar_t* xml : kBadBookmarks) {
        EXPECT_EQ(::EvtCreateBookmark(xml), nullptr);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_MALFORMED_XML_TEXT});
    }
}

}  // namespace
