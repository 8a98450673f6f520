// What every event-log service does, whatever its logs hold. Nothing here knows of recordings.

#include "event_log.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace replay_test;

constexpr const wchar_t* kChannel = L"System";  // exists everywhere and may be read by everybody

// The next channel path as a careful caller reads it.
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

TEST(ChannelEnum, APathThatDoesNotFitIsNotPassedOver) {
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

TEST(ChannelEnum, EndsWith259) {
    const Handle channels(::EvtOpenChannelEnum(nullptr, 0));
    while (!NextChannelPath(channels).empty()) {
    }
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
}

TEST(ChannelConfig, AnUnknownChannelIs15007) {
    EXPECT_EQ(::EvtOpenChannelConfig(nullptr, L"No Such Channel", 0), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_CHANNEL_NOT_FOUND});
}

TEST(ChannelConfig, TheTypeIsAnUInt32) {
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
    DWORD flags;
    DWORD error;
};

constexpr BadQuery kBadQueries[] = {
    {L"No Such Channel", L"*", kForward, ERROR_EVT_CHANNEL_NOT_FOUND},
    {kChannel, L"*[System[", kForward, ERROR_EVT_INVALID_QUERY},
    {kChannel, L"//Event", kForward, ERROR_EVT_INVALID_QUERY},
    {kChannel, L"*[System[not(Level=2)]]", kForward, ERROR_EVT_INVALID_QUERY},
    {kChannel, L"*[System[contains(Computer,'x')]]", kForward, ERROR_EVT_INVALID_QUERY},
    {nullptr, L"*", kForward, ERROR_INVALID_PARAMETER},
};

TEST(Query, WhatCannotBeQueriedHasItsError) {
    for (const BadQuery& bad : kBadQueries)
        EXPECT_EQ(QueryError(bad.channel, bad.query, bad.flags), bad.error)
            << reinterpret_cast<const void*>(bad.query);
}

TEST(Query, ChannelNamesAreFoundInAnyCase) {
    EXPECT_TRUE(Query(L"sYSTEM"));
}

TEST(Next, EndsWith259AndReturnsNothing) {
    const Handle results = Query(kChannel, L"*[System[EventRecordID=0]]");
    EVT_HANDLE event = nullptr;
    DWORD returned = 99;
    EXPECT_FALSE(::EvtNext(results.get(), 1, &event, INFINITE, 0, &returned));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_ITEMS});
    EXPECT_EQ(returned, DWORD{0});
}

TEST(Next, TheFirstOfAReverseQueryIsTheLastOfAForwardOne) {
    const Handle forward = Query(kChannel);
    const Handle reverse = Query(kChannel, L"*", kReverse);
    ASSERT_TRUE(::EvtSeek(forward.get(), 0, nullptr, 0, EvtSeekRelativeToLast));
    EXPECT_EQ(RecordId(NextEvent(forward)), RecordId(NextEvent(reverse)));
}

TEST(Render, GivesEighteenSystemValues) {
    const Handle event = NextEvent(Query(kChannel));
    EXPECT_EQ(SystemValues(event.get()).Count(), DWORD{18});
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

TEST(Log, TheNumberOfRecordsIsAnUInt64) {
    const Handle log(::EvtOpenLog(nullptr, kChannel, EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(::EvtGetLogInfo(log.get(), EvtLogNumberOfLogRecords, sizeof value, &value, &used));
    EXPECT_EQ(value.Type, DWORD{EvtVarTypeUInt64});
    EXPECT_EQ(used, DWORD{sizeof value});
}

TEST(Log, AnUnknownChannelIs15007) {
    EXPECT_EQ(::EvtOpenLog(nullptr, L"No Such Channel", EvtOpenChannelPath), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_CHANNEL_NOT_FOUND});
}

TEST(Publisher, OneThatIsNotRegisteredIs2) {
    EXPECT_EQ(::EvtOpenPublisherMetadata(nullptr, L"No-Such-Publisher", nullptr, 0, 0), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(Bookmark, AnEmptyOneCanBeUpdated) {
    const Handle bookmark(::EvtCreateBookmark(nullptr));
    const Handle event = NextEvent(Query(kChannel));
    ASSERT_TRUE(::EvtUpdateBookmark(bookmark.get(), event.get()));
    EXPECT_EQ(Render(bookmark.get(), EvtRenderBookmark),
              L"<BookmarkList>\r\n  <Bookmark Channel='System' RecordId='" +
                  std::to_wstring(RecordId(event)) + L"' IsCurrent='true'/>\r\n</BookmarkList>");
}

}  // namespace
