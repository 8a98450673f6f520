// The contract that every computer's event-log service keeps, whatever its logs contain. The
// program imports only the service and knows nothing of recordings. Where the documentation leaves
// a result open, a test prints what it saw.

#include "tests/replay/event_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <future>
#include <initializer_list>
#include <set>

namespace {

using namespace replay_test;

constexpr const wchar_t* kChannel = L"System";  // exists everywhere and is readable by everybody

void PrintSeen(const char* what, DWORD error) {
    std::printf("[   SAW    ] %s: %lu\n", what, static_cast<unsigned long>(error));
}

// Checks that an error is one of these, and prints it.
testing::AssertionResult IsOneOf(const char* what, DWORD error,
                                 std::initializer_list<DWORD> expected) {
    PrintSeen(what, error);
    if (std::find(expected.begin(), expected.end(), error) != expected.end())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << what << ": " << error;
}

// Asks for the size of the next channel path, then reads it. Returns "" at the end.
std::wstring NextChannelPath(const Handle& channels) {
    DWORD used = 0;
    if (::EvtNextChannelPath(channels.get(), 0, nullptr, &used) ||
        ::GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return {};
    std::wstring path(used, L'\0');
    if (!::EvtNextChannelPath(channels.get(), used, path.data(), &used))
        return {};
    path.pop_back();
    return path;
}

TEST(ChannelEnum, HoldsTheClassicLogs) {
    const Handle channels(::EvtOpenChannelEnum(nullptr, 0));
    std::set<std::wstring> paths;
    for (std::wstring path = NextChannelPath(channels); !path.empty();
         path = NextChannelPath(channels))
        paths.insert(path);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
    std::printf("[   SAW    ] channels: %u\n", static_cast<unsigned>(paths.size()));
    for (const wchar_t* classic : {L"Application", L"Security", L"System"})
        EXPECT_TRUE(paths.contains(classic)) << testing::PrintToString(std::wstring(classic));
}

TEST(ChannelEnum, APathThatDoesNotFitIsNotSkipped) {
    const Handle channels(::EvtOpenChannelEnum(nullptr, 0));
    const Handle again(::EvtOpenChannelEnum(nullptr, 0));
    DWORD used = 0;
    for (int i = 0; i < 3; ++i)
        ::EvtNextChannelPath(again.get(), 0, nullptr, &used);
    EXPECT_EQ(NextChannelPath(channels), NextChannelPath(again));
}

TEST(ChannelEnum, SizesCountCharactersWithTheTerminator) {
    const Handle channels(::EvtOpenChannelEnum(nullptr, 0));
    DWORD needed = 0;
    EXPECT_FALSE(::EvtNextChannelPath(channels.get(), 0, nullptr, &needed));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    std::wstring path(needed, L'?');
    DWORD used = 0;
    EXPECT_FALSE(::EvtNextChannelPath(channels.get(), needed - 1, path.data(), &used));
    ASSERT_TRUE(::EvtNextChannelPath(channels.get(), needed, path.data(), &used));
    EXPECT_EQ(std::wstring(path.c_str()).size() + 1, needed);
}

TEST(ChannelConfig, AnUnknownChannelReports15007) {
    EXPECT_EQ(::EvtOpenChannelConfig(nullptr, L"No Such Channel", 0), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_CHANNEL_NOT_FOUND});
}

TEST(ChannelConfig, TheTypeIsAUInt32) {
    const Handle config(::EvtOpenChannelConfig(nullptr, kChannel, 0));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(::EvtGetChannelConfigProperty(config.get(), EvtChannelConfigType, 0, sizeof value,
                                              &value, &used));
    EXPECT_EQ(value.Type, DWORD{EvtVarTypeUInt32});
    EXPECT_EQ(value.UInt32Val, DWORD{EvtChannelTypeAdmin});
}

struct BadQuery {
    const wchar_t* channel;
    const wchar_t* query;
    DWORD error;
};

constexpr BadQuery kBadQueries[] = {
    {L"No Such Channel", L"*", ERROR_EVT_CHANNEL_NOT_FOUND},
    {kChannel, L"*[System[", ERROR_EVT_INVALID_QUERY},
    {kChannel, L"*[System[not(Level=2)]]", ERROR_EVT_INVALID_QUERY},
    {kChannel, L"*[System[contains(Computer,'x')]]", ERROR_EVT_INVALID_QUERY},
};

TEST(Query, ABadQueryReportsItsError) {
    for (const BadQuery& bad : kBadQueries)
        EXPECT_EQ(QueryError(bad.channel, bad.query), bad.error)
            << testing::PrintToString(std::wstring(bad.query));
}

TEST(Query, ATruncatedDocumentFails) {
    const DWORD error = QueryError(nullptr, L"<QueryList><Query Id='0' Path='System'>");
    PrintSeen("a truncated query document", error);
    EXPECT_NE(error, DWORD{ERROR_SUCCESS});
}

TEST(Query, ChannelNamesAreFoundInAnyCase) {
    EXPECT_TRUE(Query(L"sYSTEM"));
}

TEST(Query, SixteenProvidersAndTwoTimesAreNotTooMany) {
    std::wstring providers;
    for (int i = 0; i < 16; ++i)
        providers += (i == 0 ? L"@Name=\"P" : L" or @Name=\"P") + std::to_wstring(i) + L"\"";
    const std::wstring select =
        L"<Select Path='System'>*[System[(Provider[" + providers +
        L"]) and TimeCreated[@SystemTime&gt;='2024-01-01T00:00:00.000Z' and "
        L"@SystemTime&lt;'2024-01-02T00:00:00.000Z']]]</Select>";
    const std::wstring document =
        L"<QueryList><Query Id='0' Path='System'>" + select + select + L"</Query></QueryList>";
    EXPECT_EQ(QueryError(nullptr, document.c_str(), kReverse), DWORD{ERROR_SUCCESS});
}

TEST(Query, OfTheSecurityLogNeedsTheRight) {
    EXPECT_TRUE(IsOneOf("a query of the Security log", QueryError(L"Security", L"*"),
                        {ERROR_SUCCESS, ERROR_ACCESS_DENIED}));
}

TEST(Next, EndsWith259) {
    const Handle results = Query(kChannel, L"*[System[EventRecordID=0]]");
    EVT_HANDLE event = nullptr;
    DWORD returned = 0;
    EXPECT_FALSE(::EvtNext(results.get(), 1, &event, INFINITE, 0, &returned));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
}

TEST(Next, AReverseQueryGivesDescendingRecordIds) {
    const Handle results = Query(kChannel, L"*", kReverse);
    ASSERT_TRUE(::EvtSeek(results.get(), 0, nullptr, 0, EvtSeekRelativeToFirst));
    EVT_HANDLE events[128] = {};
    DWORD returned = 0;
    ASSERT_TRUE(::EvtNext(results.get(), 128, events, INFINITE, 0, &returned));
    std::vector<unsigned long long> ids;
    for (DWORD i = 0; i < returned; ++i)
        ids.push_back(RecordId(Handle(events[i])));
    EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end(), std::less_equal<>()), ids.end())
        << testing::PrintToString(ids);
}

// Tries again if an event was written between the two queries.
TEST(Next, AReverseQueryStartsWithTheLastEventOfAForwardOne) {
    unsigned long long last = 0;
    unsigned long long first = 0;
    for (int i = 0; i < 10 && (i == 0 || last != first); ++i) {
        const Handle forward = Query(kChannel);
        ASSERT_TRUE(::EvtSeek(forward.get(), 0, nullptr, 0, EvtSeekRelativeToLast));
        last = RecordId(NextEvent(forward));
        first = RecordId(NextEvent(Query(kChannel, L"*", kReverse)));
    }
    EXPECT_EQ(last, first);
}

// The query makes the service scan the whole log for a record that does not exist. The scan of a
// short log may end before the cancel.
TEST(Next, ACancelledReadReports1223) {
    Handle results;
    std::promise<EVT_HANDLE> opened;
    auto read = std::async(std::launch::async, [&] {
        results = Query(kChannel, L"*[System[EventRecordID=0]]");
        opened.set_value(results.get());
        EVT_HANDLE event = nullptr;
        DWORD returned = 0;
        return ErrorOf(::EvtNext(results.get(), 1, &event, INFINITE, 0, &returned));
    });
    const EVT_HANDLE reading = opened.get_future().get();
    // The first cancel may come before the read begins.
    do {
        ::EvtCancel(reading);
    } while (read.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready);
    EXPECT_TRUE(IsOneOf("a cancelled read, 259 if it was faster", read.get(),
                        {ERROR_CANCELLED, ERROR_NO_MORE_ITEMS}));
}

std::wstring BookmarkOf(unsigned long long recordId) {
    return L"<BookmarkList><Bookmark Channel='System' RecordId='" + std::to_wstring(recordId) +
           L"' IsCurrent='true'/></BookmarkList>";
}

TEST(Seek, AStrictBookmarkFindsItsEvent) {
    const unsigned long long recordId = RecordId(NextEvent(Query(kChannel, L"*", kReverse)));
    const Handle bookmark(::EvtCreateBookmark(BookmarkOf(recordId).c_str()));
    const Handle results = Query(kChannel);
    ASSERT_TRUE(
        ::EvtSeek(results.get(), 0, bookmark.get(), 0, EvtSeekRelativeToBookmark | EvtSeekStrict));
    EXPECT_EQ(RecordId(NextEvent(results)), recordId);
}

TEST(Seek, AStrictBookmarkToNoEventFails) {
    const Handle bookmark(::EvtCreateBookmark(BookmarkOf(999'999'999'999).c_str()));
    const Handle results = Query(kChannel);
    const DWORD error = ErrorOf(
        ::EvtSeek(results.get(), 0, bookmark.get(), 0, EvtSeekRelativeToBookmark | EvtSeekStrict));
    EXPECT_TRUE(IsOneOf(
        "a strict bookmark to no event", error,
        {ERROR_NOT_FOUND, ERROR_EVT_QUERY_RESULT_STALE, ERROR_EVT_QUERY_RESULT_INVALID_POSITION}));
}

TEST(Render, GivesEighteenSystemValues) {
    const Handle event = NextEvent(Query(kChannel));
    EXPECT_EQ(SystemValues(event.get()).Count(), DWORD{18});
}

TEST(Render, SystemValuesHaveTheirTypes) {
    const Handle event = NextEvent(Query(kChannel, L"*", kReverse));
    const SystemValues values(event.get());
    EXPECT_EQ(values.Type(EvtSystemProviderName), DWORD{EvtVarTypeString});
    EXPECT_EQ(values.Type(EvtSystemEventID), DWORD{EvtVarTypeUInt16});
    EXPECT_EQ(values.Type(EvtSystemLevel), DWORD{EvtVarTypeByte});
    EXPECT_EQ(values.Type(EvtSystemKeywords), DWORD{EvtVarTypeHexInt64});
    EXPECT_EQ(values.Type(EvtSystemTimeCreated), DWORD{EvtVarTypeFileTime});
    EXPECT_EQ(values.Type(EvtSystemEventRecordId), DWORD{EvtVarTypeUInt64});
}

TEST(Render, SizesCountBytes) {
    const Handle event = NextEvent(Query(kChannel));
    DWORD needed = 0;
    DWORD count = 0;
    EXPECT_FALSE(::EvtRender(nullptr, event.get(), EvtRenderEventXml, 0, nullptr, &needed, &count));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    std::wstring text(needed / sizeof(wchar_t), L'\0');
    ASSERT_TRUE(
        ::EvtRender(nullptr, event.get(), EvtRenderEventXml, needed, text.data(), &needed, &count));
    EXPECT_EQ((std::wstring(text.c_str()).size() + 1) * sizeof(wchar_t), needed);
}

TEST(Render, ValuesPointIntoTheCallersBuffer) {
    const Handle event = NextEvent(Query(kChannel));
    const Handle context = SystemContext();
    alignas(EVT_VARIANT) char buffer[8192];
    DWORD used = 0;
    DWORD count = 0;
    ASSERT_TRUE(::EvtRender(context.get(), event.get(), EvtRenderEventValues, sizeof buffer, buffer,
                            &used, &count));
    const auto* text = reinterpret_cast<const char*>(
        reinterpret_cast<const EVT_VARIANT*>(buffer)[EvtSystemProviderName].StringVal);
    EXPECT_GE(text, buffer + 18 * sizeof(EVT_VARIANT));
    EXPECT_LT(text, buffer + used);
}

TEST(Close, AnEventOutlivesItsQuery) {
    Handle results = Query(kChannel);
    const Handle event = NextEvent(results);
    results = Handle();
    EXPECT_FALSE(Render(event.get()).empty());
}

TEST(Log, TheNumberOfRecordsIsAUInt64) {
    const Handle log(::EvtOpenLog(nullptr, kChannel, EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(::EvtGetLogInfo(log.get(), EvtLogNumberOfLogRecords, sizeof value, &value, &used));
    EXPECT_EQ(value.Type, DWORD{EvtVarTypeUInt64});
    EXPECT_GT(value.UInt64Val, 0U);
}

TEST(Log, OfAnUnknownChannelCannotBeOpened) {
    EXPECT_EQ(::EvtOpenLog(nullptr, L"No Such Channel", EvtOpenChannelPath), nullptr);
    PrintSeen("the log of an unknown channel", ::GetLastError());
}

TEST(Publisher, AnUnregisteredPublisherReports2) {
    EXPECT_EQ(::EvtOpenPublisherMetadata(nullptr, L"No-Such-Publisher", nullptr, 0, 0), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

// Asks for the size first, and skips events without a message. The text comes with an error if the
// message refers to a value that the event lacks.
TEST(Publisher, FormatsAMessage) {
    const Handle results = Query(kChannel, L"*", kReverse);
    DWORD error = ERROR_SUCCESS;
    for (Handle event = NextEvent(results); event && error != ERROR_INSUFFICIENT_BUFFER;
         event = NextEvent(results)) {
        const SystemValues values(event.get());
        const Handle publisher(::EvtOpenPublisherMetadata(
            nullptr, values[EvtSystemProviderName].StringVal, nullptr, 0, 0));
        DWORD used = 0;
        error = ErrorOf(::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr,
                                           EvtFormatMessageEvent, 0, nullptr, &used));
        if (error != ERROR_INSUFFICIENT_BUFFER)
            continue;
        std::wstring text(used, L'\0');
        const DWORD filled =
            ErrorOf(::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr,
                                       EvtFormatMessageEvent, used, text.data(), &used));
        EXPECT_TRUE(IsOneOf("a message", filled,
                            {ERROR_SUCCESS, ERROR_EVT_UNRESOLVED_VALUE_INSERT,
                             ERROR_EVT_UNRESOLVED_PARAMETER_INSERT}));
        EXPECT_NE(text.front(), L'\0');
    }
    EXPECT_EQ(error, DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(Subscribe, ToFutureEventsStartsEmpty) {
    const HANDLE signal = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    {
        const Handle subscription(::EvtSubscribe(nullptr, signal, kChannel, L"*", nullptr, nullptr,
                                                 nullptr, EvtSubscribeToFutureEvents));
        ASSERT_TRUE(subscription) << ::GetLastError();
        EVT_HANDLE event = nullptr;
        DWORD returned = 0;
        const DWORD error = ErrorOf(::EvtNext(subscription.get(), 1, &event, 0, 0, &returned));
        const Handle owner(event);
        EXPECT_TRUE(
            IsOneOf("the first EvtNext of a subscription", error,
                    {ERROR_SUCCESS, ERROR_NO_MORE_ITEMS, ERROR_INVALID_OPERATION, ERROR_TIMEOUT}));
    }
    ::CloseHandle(signal);
}

TEST(Bookmark, AnEmptyBookmarkAcceptsAnEvent) {
    const Handle bookmark(::EvtCreateBookmark(nullptr));
    const Handle event = NextEvent(Query(kChannel));
    ASSERT_TRUE(::EvtUpdateBookmark(bookmark.get(), event.get()));
    const std::wstring xml = Render(bookmark.get(), EvtRenderBookmark);
    const std::wstring entry =
        L"<Bookmark Channel='System' RecordId='" + std::to_wstring(RecordId(event)) + L"'";
    EXPECT_NE(xml.find(entry), std::wstring::npos) << testing::PrintToString(xml);
}

}  // namespace
