#include "event_log.h"
#include "support/temp_folder.h"
#include "test_recording.h"

namespace {

using namespace replay_test;
using tavrin::test::AppendToFile;
using Ids = std::vector<unsigned long long>;

constexpr DWORD kPatienceMs = 5000;
// The watching thread checks several times in this period.
constexpr DWORD kQuietMs = 300;

class Subscriptions : public ReplayTest {
protected:
    ~Subscriptions() override { ::CloseHandle(signal); }

    Handle Subscribe(const wchar_t* channel, const wchar_t* query = L"*",
                     DWORD flags = EvtSubscribeToFutureEvents,
                     EVT_HANDLE bookmark = nullptr) const {
        return Handle(
            ::EvtSubscribe(nullptr, signal, channel, query, bookmark, nullptr, nullptr, flags));
    }
    bool IsSignalledWithin(DWORD milliseconds) const {
        return ::WaitForSingleObject(signal, milliseconds) == WAIT_OBJECT_0;
    }

    HANDLE signal = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

TEST_F(Subscriptions, AnEventThatArrivesSignals) {
    const Handle subscription = Subscribe(L"Alpha");
    EXPECT_FALSE(IsSignalledWithin(0));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_TRUE(IsSignalledWithin(0));
    EXPECT_EQ(RecordIds(subscription), Ids{8});
}

TEST_F(Subscriptions, WithoutASignalNothingIsPending) {
    const Handle subscription = Subscribe(L"Alpha");
    EXPECT_FALSE(NextEvent(subscription));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_OPERATION});
}

TEST_F(Subscriptions, WithAnEventObjectCreatedSignalledReadingEndsWith259) {
    ::SetEvent(signal);
    const Handle subscription = Subscribe(L"Alpha");
    EXPECT_FALSE(NextEvent(subscription));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
}

TEST_F(Subscriptions, OnlyMatchingEventsSignal) {
    const Handle subscription = Subscribe(L"Alpha", L"*[System[Provider[@Name='Alder']]]");
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha provider=Birch"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Beta/Operational provider=Alder"));
    EXPECT_FALSE(IsSignalledWithin(kQuietMs));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha provider=Alder"));
    EXPECT_TRUE(IsSignalledWithin(0));
}

TEST_F(Subscriptions, AStructuredQueryNeedsNoPath) {
    const Handle subscription =
        Subscribe(nullptr,
                  L"<QueryList><Query Id='0' Path='Alpha'><Select Path='Alpha'>"
                  L"*[System[TimeCreated[@SystemTime&lt;&apos;2000-01-01T00:00:00.000Z&apos;]]]"
                  L"</Select></Query></QueryList>");
    ASSERT_TRUE(subscription);
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_FALSE(IsSignalledWithin(kQuietMs));
}

TEST_F(Subscriptions, TheSignalComesAgainOnlyAfterAllEventsAreRead) {
    const Handle subscription = Subscribe(L"Alpha");
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    ::ResetEvent(signal);
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_FALSE(IsSignalledWithin(kQuietMs));
    EXPECT_EQ(RecordIds(subscription), (Ids{8, 9}));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_TRUE(IsSignalledWithin(0));
}

TEST_F(Subscriptions, EventsAppendedToTheFileArrive) {
    const Handle subscription = Subscribe(L"Alpha");
    recording.AppendEvent(L"Alpha", {.recordId = 20});
    EXPECT_TRUE(IsSignalledWithin(kPatienceMs));
    EXPECT_EQ(RecordIds(subscription), Ids{20});
}

TEST_F(Subscriptions, EachAppendedEventArrivesOnce) {
    const Handle subscription = Subscribe(L"Alpha");
    recording.AppendEvent(L"Alpha", {.recordId = 20});
    ASSERT_TRUE(IsSignalledWithin(kPatienceMs));
    EXPECT_EQ(RecordIds(subscription), Ids{20});
    ::ResetEvent(signal);
    recording.AppendEvent(L"Alpha", {.recordId = 21});
    ASSERT_TRUE(IsSignalledWithin(kPatienceMs));
    EXPECT_EQ(RecordIds(subscription), Ids{21});
    EXPECT_EQ(RecordIds(Query(L"Alpha")), (Ids{1, 2, 4, 7, 20, 21}));
}

TEST_F(Subscriptions, AnEventWrittenInTwoStrokesArrivesOnce) {
    const Handle subscription = Subscribe(L"Alpha");
    const std::string xml = Xml({.recordId = 20});
    AppendToFile(recording.FileOf(L"Alpha"), xml.substr(0, 100));
    EXPECT_FALSE(IsSignalledWithin(kQuietMs));
    AppendToFile(recording.FileOf(L"Alpha"), xml.substr(100));
    EXPECT_TRUE(IsSignalledWithin(kPatienceMs));
    EXPECT_EQ(RecordIds(subscription), Ids{20});
}

TEST_F(Subscriptions, AFileThatAppearsLaterIsServed) {
    const Handle subscription = Subscribe(L"Beta/Operational");
    recording.WriteEvents(L"Beta/Operational", {{.recordId = 3}});
    EXPECT_TRUE(IsSignalledWithin(kPatienceMs));
    EXPECT_EQ(RecordIds(subscription), Ids{3});
}

TEST_F(Subscriptions, AScriptedEventArrivesWhenItIsDue) {
    const Handle subscription = Subscribe(L"Alpha");
    ASSERT_TRUE(replay::Script(L"arrive at=200 channel=Alpha"));
    EXPECT_TRUE(IsSignalledWithin(kPatienceMs));
}

TEST_F(Subscriptions, StartingAtTheOldestReadsEveryEvent) {
    ::SetEvent(signal);
    EXPECT_EQ(RecordIds(Subscribe(L"Alpha", L"*", EvtSubscribeStartAtOldestRecord)),
              (Ids{1, 2, 4, 7}));
}

TEST_F(Subscriptions, StartingAfterABookmarkReadsTheLaterEvents) {
    ::SetEvent(signal);
    const Handle there(::EvtCreateBookmark(
        L"<BookmarkList><Bookmark Channel='Alpha' RecordId='2' IsCurrent='true'/></BookmarkList>"));
    EXPECT_EQ(RecordIds(Subscribe(L"Alpha", L"*", EvtSubscribeStartAfterBookmark, there.get())),
              (Ids{4, 7}));
    const Handle gone(::EvtCreateBookmark(
        L"<BookmarkList><Bookmark Channel='Alpha' RecordId='3' IsCurrent='true'/></BookmarkList>"));
    EXPECT_EQ(RecordIds(Subscribe(L"Alpha", L"*", EvtSubscribeStartAfterBookmark, gone.get())),
              (Ids{4, 7}));
    EXPECT_FALSE(
        Subscribe(L"Alpha", L"*", EvtSubscribeStartAfterBookmark | EvtSubscribeStrict, gone.get()));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_FOUND});
}

struct BadSubscription {
    const wchar_t* channel;
    const wchar_t* query;
    DWORD error;
};
constexpr BadSubscription kBadSubscriptions[] = {
    {L"None", L"*", ERROR_EVT_CHANNEL_NOT_FOUND}, {L"Locked", L"*", ERROR_ACCESS_DENIED},
    {L"Alpha", L"*[", ERROR_EVT_INVALID_QUERY},   {L"Trace/Analytic", L"*", ERROR_NOT_SUPPORTED},
    {L"Quiet/Debug", L"*", ERROR_NOT_SUPPORTED},
};

TEST_F(Subscriptions, WhatCannotBeSubscribedToHasItsError) {
    for (const BadSubscription& bad : kBadSubscriptions) {
        EXPECT_FALSE(Subscribe(bad.channel, bad.query));
        EXPECT_EQ(::GetLastError(), bad.error);
    }
}

TEST_F(Subscriptions, AClosedEventObjectIsSafe) {
    const HANDLE own = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const Handle subscription(::EvtSubscribe(nullptr, own, L"Alpha", L"*", nullptr, nullptr,
                                             nullptr, EvtSubscribeToFutureEvents));
    ::CloseHandle(own);
    EXPECT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_EQ(RecordIds(subscription), Ids{8});
}

TEST_F(Subscriptions, NewEventsFollowThoseOfAClearedLog) {
    const Handle subscription = Subscribe(L"Alpha");
    ASSERT_TRUE(replay::Do(L"clear channel=Alpha"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_TRUE(IsSignalledWithin(0));
    EXPECT_EQ(RecordIds(subscription), Ids{8});
}

}  // namespace
