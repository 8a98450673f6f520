#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;
using Ids = std::vector<unsigned long long>;

using Queries = ReplayTest;

struct Matching {
    const wchar_t* query;
    Ids ids;
};

TEST_F(Queries, AnExpressionSelectsItsEvents) {
    const Matching kCases[] = {
        {L"*", {1, 2, 4, 7}},
        {L"Event", {1, 2, 4, 7}},
        {L"*[System]", {1, 2, 4, 7}},
        {L"*[System[Level=2]]", {2}},
        {L"*[System[Level='2']]", {2}},
        {L"*[System/Level=2]", {2}},
        {L"Event/System[Level=2]", {2}},
        {L"Event[System[Level=2]]", {2}},
        {L"*[System[Level!=2]]", {1, 4, 7}},
        {L"*[System[(Level=2 or Level=3)]]", {2, 4}},
        {L"*[System[(Level >= 2 and Level <= 3) or EventID=10]]", {1, 2, 4, 7}},
        {L"*[System[Level=4 or Level=2 and EventID=10]]", {1}},
        {L"*[System[(Level=4 or Level=2) and EventID=10]]", {1}},
        {L"*[System[EventID=10] and System[Level=0]]", {7}},
        {L"*[System[EventID=10]][System[Level=0]]", {7}},
        {L"*[System[EventRecordID>2 and EventRecordID<7]]", {4}},
        {L"*[System[Provider[@Name='Alder']]]", {1, 4}},
        {L"*[System[Provider/@Name='Alder']]", {1, 4}},
        {L"*[System[Provider[@Name=\"Alder\" or @Name=\"Cedar\"]]]", {1, 4, 7}},
        {L"*[System[Provider[@Name='Birch & Co']]]", {2}},
        {L"*[System[Provider[@Name='alder']]]", {}},
        {L"*[System[Provider[@Name='']]]", {}},
        {L"*[System[TimeCreated[@SystemTime>='2024-03-01T08:00:01.500Z']]]", {2, 4, 7}},
        {L"*[System[TimeCreated[@SystemTime<'2024-03-01T08:00:02Z']]]", {1, 2}},
        {L"*[System[TimeCreated[@SystemTime>='2024-03-01T08:00:01.0Z' and "
         L"@SystemTime<'2024-03-01T08:00:02.000000000Z']]]",
         {2}},
        {L"*[System[(Provider[@Name=\"Alder\"]) and "
         L"TimeCreated[@SystemTime>='2024-03-01T08:00:01.000Z']]]",
         {4}},
        {L"*[System[band(Keywords,9007199254740992)]]", {7}},
        {L"*[System[TimeCreated[timediff(@SystemTime) <= 1000]]]", {}},
        {L"*[System[TimeCreated[timediff(@SystemTime,'2024-03-01T08:00:02Z') <= 500]]]", {2, 4, 7}},
        {L"*[System[Execution[@ProcessID=4711]]]", {1, 2, 4, 7}},
        {L"*[System[Computer='TESTER' and Channel='Alpha']]", {1, 2, 4, 7}},
        {L"*[System[Security[@UserID='S-1-5-18']]]", {}},
        {L"*[System[Security[@UserID!='S-1-5-18']]]", {}},
        {L"*[System[Nonsense=1]]", {}},
    };
    for (const Matching& expected : kCases) {
        const Handle results = Query(L"Alpha", expected.query);
        EXPECT_TRUE(results) << testing::PrintToString(std::wstring(expected.query));
        EXPECT_EQ(RecordIds(results), expected.ids)
            << testing::PrintToString(std::wstring(expected.query));
    }
}

constexpr const wchar_t* kMalformed[] = {
    L"Level=2",
    L"*[System[Level=]]",
    L"*[System[Level=2]",
    L"*[System[Level=2]]]",
    L"*[System[2=Level]]",
    L"*[System[Level==2]]",
    L"*[System[Level='2]]",
    L"*[System[Level=two]]",
    L"*[System[Level='two']]",
    L"*[System[()]]",
    L"*[System[]]",
    L"*[]",
    L"*[1]",
    L"*[last()]",
    L"/Event",
    L"//Event",
    L"*[System[starts-with(Computer,'H')]]",
    L"*[System[TimeCreated[@SystemTime>='yesterday']]]",
    L"*[System[band(Keywords)]]",
    L"*[EventData[Data='x']]",
    L"* | *",
};

TEST_F(Queries, WhatCannotBeParsedIs15001) {
    for (const wchar_t* query : kMalformed)
        EXPECT_EQ(QueryError(L"Alpha", query), DWORD{ERROR_EVT_INVALID_QUERY})
            << testing::PrintToString(std::wstring(query));
}

TEST_F(Queries, TheExtendedStatusSaysWhy) {
    EXPECT_FALSE(Query(L"Alpha", L"*[System[Level=]]"));
    wchar_t text[200] = L"";
    DWORD used = 0;
    EXPECT_EQ(::EvtGetExtendedStatus(200, text, &used), DWORD{ERROR_SUCCESS});
    EXPECT_STREQ(text, L"a number or a text in quotes is expected at character 15");
}

// "*[System[EventID=0 or EventID=1 or ...]]"
std::wstring ManyTests(int number) {
    std::wstring query = L"*[System[EventID=0";
    for (int i = 1; i < number; ++i)
        query += L" or EventID=" + std::to_wstring(i);
    return query + L"]]";
}

TEST_F(Queries, UpToTwentyTwoTestsAreTaken) {
    EXPECT_EQ(QueryError(L"Alpha", ManyTests(22).c_str()), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(QueryError(L"Alpha", ManyTests(23).c_str()), DWORD{ERROR_EVT_INVALID_QUERY});
}

TEST_F(Queries, NestingHasALimitInsteadOfACrash) {
    const std::wstring open(100'000, L'(');
    EXPECT_EQ(QueryError(L"Alpha", (L"*[System[" + open).c_str()), DWORD{ERROR_EVT_INVALID_QUERY});
}

TEST_F(Queries, SeveralSelectsReturnEachEventOnce) {
    const Handle results =
        Query(nullptr,
              L"<QueryList><Query Id='0' Path='Alpha'>"
              L"<Select Path='Alpha'>*[System[Provider[@Name=&quot;Alder&quot;]]]</Select>"
              L"<Select Path='Alpha'>*[System[Level=3 or Level=2]]</Select></Query></QueryList>",
              kReverse);
    EXPECT_EQ(RecordIds(results), (Ids{4, 2, 1}));
}

TEST_F(Queries, SuppressWinsOverSelect) {
    const Handle results = Query(nullptr,
                                 L"<QueryList><Query Path=\"Alpha\"><Select>*</Select>"
                                 L"<Suppress>*[System[EventID=10]]</Suppress></Query></QueryList>");
    EXPECT_EQ(RecordIds(results), (Ids{2, 4}));
}

TEST_F(Queries, ThePathOfTheCallIsIgnoredWhenTheQueryNamesOne) {
    EXPECT_EQ(
        RecordIds(Query(L"Locked",
                        L"<QueryList><Query><Select Path='Alpha'>*</Select></Query></QueryList>")),
        (Ids{1, 2, 4, 7}));
}

TEST_F(Queries, SeveralChannelsAreMergedByTime) {
    recording.WriteEvents(L"Beta/Operational",
                          {{.recordId = 50, .time = L"2024-03-01T08:00:01.0000000Z"},
                           {.recordId = 51, .time = L"2024-03-01T08:30:00.0000000Z"}});
    Serve();
    const wchar_t* query =
        L"<QueryList><Query><Select Path='Alpha'>*</Select>"
        L"<Select Path='Beta/Operational'>*</Select></Query></QueryList>";
    EXPECT_EQ(RecordIds(Query(nullptr, query)), (Ids{1, 50, 2, 4, 51, 7}));
    EXPECT_EQ(RecordIds(Query(nullptr, query, kReverse)), (Ids{7, 51, 4, 2, 50, 1}));
}

struct BadDocument {
    const wchar_t* query;
    DWORD error;
};
constexpr BadDocument kBadDocuments[] = {
    {L"<QueryList><Query><Select Path='Alpha'>*</Select></Query>", ERROR_EVT_MALFORMED_XML_TEXT},
    {L"<QueryList><Query><Select Path='Alpha'>*</Query></QueryList>", ERROR_EVT_MALFORMED_XML_TEXT},
    {L"<QueryList></QueryList>", ERROR_EVT_INVALID_QUERY},
    {L"<QueryList><Query><Select>*</Select></Query></QueryList>", ERROR_EVT_INVALID_QUERY},
    {L"<QueryList><Query><Select Path='Alpha'>*[</Select></Query></QueryList>",
     ERROR_EVT_INVALID_QUERY},
    {L"<QueryList><Query><Select Path='None'>*</Select></Query></QueryList>",
     ERROR_EVT_CHANNEL_NOT_FOUND},
    {L"<QueryList><Query><Select Path='Locked'>*</Select></Query></QueryList>",
     ERROR_ACCESS_DENIED},
};

TEST_F(Queries, ABadDocumentHasItsError) {
    for (const BadDocument& bad : kBadDocuments)
        EXPECT_EQ(QueryError(nullptr, bad.query), bad.error)
            << testing::PrintToString(std::wstring(bad.query));
}

TEST_F(Queries, WithToleranceFailingChannelsAreOmitted) {
    constexpr DWORD kTolerant = kForward | EvtQueryTolerateQueryErrors;
    EXPECT_EQ(RecordIds(Query(nullptr,
                              L"<QueryList><Query><Select Path='Locked'>*</Select>"
                              L"<Select Path='Alpha'>*</Select></Query></QueryList>",
                              kTolerant)),
              (Ids{1, 2, 4, 7}));
    EXPECT_EQ(QueryError(L"Locked", L"*", kTolerant), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(Queries, EventsThatArriveMeanwhileAreIncluded) {
    const Handle results = Query(L"Alpha", L"*[System[EventID=10]]");
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha id=10 record=9"));
    EXPECT_EQ(RecordIds(results), (Ids{1, 7, 9}));
}

TEST_F(Queries, AClearedLogMakesAQueryStale) {
    const Handle results = Query(L"Alpha");
    ASSERT_TRUE(replay::Do(L"clear channel=Alpha"));
    EXPECT_FALSE(NextEvent(results));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_QUERY_RESULT_STALE});
    EXPECT_EQ(RecordIds(Query(L"Alpha")), Ids());
}

TEST_F(Queries, RecordIdsGoOnAfterALogWasCleared) {
    ASSERT_TRUE(replay::Do(L"clear channel=Alpha"));
    ASSERT_TRUE(replay::Do(L"arrive channel=Alpha"));
    EXPECT_EQ(RecordIds(Query(L"Alpha")), Ids{8});
}

TEST_F(Queries, AResultOfMoreThanTwoMegabytesIs1734AndIsSkipped) {
    const std::wstring large =
        L"<EventData><Data>" + std::wstring(25'000, L'x') + L"</Data></EventData>";
    ServeAlpha(tavrin::test::Events(62, {.data = large}));
    const Handle results = Query(L"Alpha");
    EVT_HANDLE handles[60]{};
    DWORD returned = 99;
    EXPECT_FALSE(EvtNext(results.get(), 60, handles, INFINITE, 0, &returned));
    EXPECT_EQ(GetLastError(), DWORD{RPC_S_INVALID_BOUND});
    EXPECT_EQ(returned, DWORD{0});
    EXPECT_EQ(RecordIds(results), (Ids{61, 62}));
    EXPECT_EQ(RecordIds(Query(L"Alpha")).size(), 62u) << "smaller reads return every event";
}

}  // namespace
