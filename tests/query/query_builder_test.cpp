#include "query/query_builder.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "support/trace_capture.h"

namespace tavrin::query {
namespace {

constexpr TimeRangeFilter kAnyTime{};

std::uint64_t Utc(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second,
                  WORD milliseconds = 0) {
    const SYSTEMTIME fields{year, month, 0, day, hour, minute, second, milliseconds};
    FILETIME time{};
    SystemTimeToFileTime(&fields, &time);
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

const std::uint64_t kEight = Utc(2024, 3, 1, 8, 0, 0);
const std::uint64_t kOneSecondPastNine = Utc(2024, 3, 1, 9, 0, 1);

TimeRangeFilter From(std::uint64_t from) {
    return {true, false, from, 0};
}
TimeRangeFilter To(std::uint64_t to) {
    return {false, true, 0, to};
}
TimeRangeFilter FromTo(std::uint64_t from, std::uint64_t to) {
    return {true, true, from, to};
}

SourceSet NumberedSources(int count) {
    SourceSet names;
    for (int i = 1; i <= count; ++i) {
        names.insert(L"Source" + std::wstring(i < 10 ? L"0" : L"") + std::to_wstring(i));
    }
    return names;
}

std::size_t CountOf(const std::wstring& text, const std::wstring& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(FormatQueryTime, WritesUtcWithMillisecondsIn24Characters) {
    const struct {
        std::uint64_t time;
        const wchar_t* text;
    } cases[] = {
        {kEight, L"2024-03-01T08:00:00.000Z"},
        {Utc(2024, 12, 31, 23, 59, 59, 999), L"2024-12-31T23:59:59.999Z"},
        {Utc(2024, 3, 1, 8, 0, 0, 7), L"2024-03-01T08:00:00.007Z"},
        {0, L"1601-01-01T00:00:00.000Z"},
    };
    for (const auto& [time, text] : cases) {
        EXPECT_EQ(FormatQueryTime(time), text);
    }
}

TEST(FormatQueryTime, IsAllZeroForATimeThatCannotBeConverted) {
    EXPECT_EQ(FormatQueryTime(0xFFFFFFFFFFFFFFFF), L"0000-00-00T00:00:00.000Z");
}

TEST(AppendSelect, EscapesTheClauseAndNotThePath) {
    std::wstring document = L"before";

    AppendSelect(document, L"A&amp;B", L"Provider[@Name=\"x\"]");

    EXPECT_EQ(document,
              L"before<Select Path='A&amp;B'>*[System[Provider[@Name=&quot;x&quot;]]]</Select>");
}

TEST(BuildQueryText, IsEmptyWithoutFilters) {
    EXPECT_EQ(BuildQueryText(L"Application", kAnyTime, {}), L"");
}

TEST(BuildQueryText, SelectsTheChosenSources) {
    EXPECT_EQ(BuildQueryText(L"Application", kAnyTime, {L"MsiInstaller", L"Application Error"}),
              L"<QueryList><Query Id='0' Path='Application'><Select "
              L"Path='Application'>*[System[Provider[@Name=&quot;Application Error&quot; or "
              L"@Name=&quot;MsiInstaller&quot;]]]</Select></Query></QueryList>");
}

TEST(BuildQueryText, SelectsTheTimesFromALowerBound) {
    EXPECT_EQ(BuildQueryText(L"System", From(kEight), {}),
              L"<QueryList><Query Id='0' Path='System'><Select "
              L"Path='System'>*[System[TimeCreated[@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&"
              L"apos;]]]</Select></Query></QueryList>");
}

TEST(BuildQueryText, SelectsTheTimesBeforeAnUpperBound) {
    EXPECT_EQ(BuildQueryText(L"System", To(kOneSecondPastNine), {}),
              L"<QueryList><Query Id='0' Path='System'><Select "
              L"Path='System'>*[System[TimeCreated[@SystemTime&lt;&apos;2024-03-01T09:00:01.000Z&"
              L"apos;]]]</Select></Query></QueryList>");
}

TEST(BuildQueryText, SelectsTheTimesBetweenTwoBounds) {
    EXPECT_EQ(
        BuildQueryText(L"System", FromTo(kEight, kOneSecondPastNine), {}),
        L"<QueryList><Query Id='0' Path='System'><Select "
        L"Path='System'>*[System[TimeCreated[@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&apos; "
        L"and @SystemTime&lt;&apos;2024-03-01T09:00:01.000Z&apos;]]]</Select></Query></QueryList>");
}

TEST(BuildQueryText, JoinsSourcesAndTimes) {
    EXPECT_EQ(
        BuildQueryText(L"Application", FromTo(kEight, kOneSecondPastNine), {L"MsiInstaller"}),
        L"<QueryList><Query Id='0' Path='Application'><Select "
        L"Path='Application'>*[System[(Provider[@Name=&quot;MsiInstaller&quot;]) and "
        L"TimeCreated[@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&apos; and "
        L"@SystemTime&lt;&apos;2024-03-01T09:00:01.000Z&apos;]]]</Select></Query></QueryList>");
}

TEST(BuildQueryText, IgnoresTheValuesOfUnsetBounds) {
    EXPECT_EQ(BuildQueryText(L"System", {false, false, kEight, kEight}, {}), L"");
    EXPECT_EQ(BuildQueryText(L"System", {true, false, kEight, kEight}, {}),
              BuildQueryText(L"System", From(kEight), {}));
}

TEST(BuildQueryText, EnclosesANameInQuotesThatItDoesNotContain) {
    const struct {
        const wchar_t* name;
        const wchar_t* clause;
    } cases[] = {
        {L"Plain", L"@Name=&quot;Plain&quot;"},
        {L"The \"Quoted\"", L"@Name=&apos;The &quot;Quoted&quot;&apos;"},
        {L"O'Hara", L"@Name=&quot;O&apos;Hara&quot;"},
        {L"", L"@Name=&quot;&quot;"},
        {L"A & B <c>", L"@Name=&quot;A &amp; B &lt;c&gt;&quot;"},  // escaped only once
        {L"A&amp;B", L"@Name=&quot;A&amp;amp;B&quot;"},
    };
    for (const auto& [name, clause] : cases) {
        EXPECT_EQ(BuildQueryText(L"L", kAnyTime, {name}),
                  std::wstring(L"<QueryList><Query Id='0' Path='L'><Select Path='L'>*[System["
                               L"Provider[") +
                      clause + L"]]]</Select></Query></QueryList>");
    }
}

TEST(BuildQueryText, SkipsANameWithBothKindsOfQuotesAndTracesIt) {
    const test::TraceCapture trace;

    const std::wstring query = BuildQueryText(L"L", kAnyTime, {L"A", L"B'\"", L"C"});

    EXPECT_EQ(query, BuildQueryText(L"L", kAnyTime, {L"A", L"C"}));
    EXPECT_EQ(trace.WideMessages(),
              std::vector<std::wstring>{
                  L"BuildChannelQuery: skipping provider with both quote kinds: B'\""});
}

TEST(BuildQueryText, ContainsOnlyTheTimesIfEveryNameIsSkipped) {
    const SourceSet unquotable = {L"a'\"", L"b\"'"};

    EXPECT_EQ(BuildQueryText(L"L", kAnyTime, unquotable), L"");
    EXPECT_EQ(BuildQueryText(L"L", From(kEight), unquotable),
              BuildQueryText(L"L", From(kEight), {}));
}

TEST(BuildQueryText, GroupsTheNamesBySixteen) {
    const struct {
        int names;
        std::size_t selects;
    } cases[] = {{1, 1}, {15, 1}, {16, 1}, {17, 2}, {32, 2}, {33, 3}, {48, 3}, {49, 4}};
    for (const auto& [names, selects] : cases) {
        const std::wstring query = BuildQueryText(L"L", kAnyTime, NumberedSources(names));

        EXPECT_EQ(CountOf(query, L"<Select "), selects) << names;
        EXPECT_EQ(CountOf(query, L"@Name="), static_cast<std::size_t>(names));
    }
}

TEST(BuildQueryText, ASkippedNameTakesNoPlaceInAGroup) {
    SourceSet names = NumberedSources(16);
    names.insert(L"A'\"");  // sorts before the others

    EXPECT_EQ(BuildQueryText(L"L", kAnyTime, names),
              BuildQueryText(L"L", kAnyTime, NumberedSources(16)));
}

TEST(BuildQueryText, RepeatsTheTimesInEveryGroup) {
    const std::wstring query = BuildQueryText(L"L", From(kEight), NumberedSources(17));

    EXPECT_TRUE(query.ends_with(
        L" or @Name=&quot;Source16&quot;]) and "
        L"TimeCreated[@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&apos;]]]</Select>"
        L"<Select Path='L'>*[System[(Provider[@Name=&quot;Source17&quot;]) and "
        L"TimeCreated[@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&apos;]]]</Select>"
        L"</Query></QueryList>"))
        << testing::PrintToString(query);
    EXPECT_EQ(CountOf(query, L"TimeCreated"), 2u);
}

TEST(BuildQueryText, OrdersTheNamesByCodeUnit) {
    const std::wstring query = BuildQueryText(L"L", kAnyTime, {L"a", L"Z", L"\x00e4", L"B"});

    EXPECT_NE(query.find(L"@Name=&quot;B&quot; or @Name=&quot;Z&quot; or @Name=&quot;a&quot; or "
                         L"@Name=&quot;\x00e4&quot;"),
              std::wstring::npos);
}

TEST(BuildQueryText, EscapesTheChannelPathInBothPlaces) {
    EXPECT_EQ(BuildQueryText(L"a&b<c>d'e\"f", From(kEight), {}),
              L"<QueryList><Query Id='0' Path='a&amp;b&lt;c&gt;d&apos;e&quot;f'>"
              L"<Select Path='a&amp;b&lt;c&gt;d&apos;e&quot;f'>*[System[TimeCreated["
              L"@SystemTime&gt;=&apos;2024-03-01T08:00:00.000Z&apos;]]]</Select></Query>"
              L"</QueryList>");
}

class BuildChannelQueryTest : public testing::Test {
protected:
    ~BuildChannelQueryTest() override {
        g_timeRangeFilter = {};
        g_sourceFilterTable.clear();
    }

    eventlog::EventNode node_{L"Main", L"Foo/Main", 0x006};
    eventlog::EventNode other_{L"Other", L"Foo/Other", 0x006};
};

TEST_F(BuildChannelQueryTest, LeavesAnEmptySourceFilterBehind) {
    EXPECT_EQ(BuildChannelQuery(node_), L"");

    ASSERT_EQ(g_sourceFilterTable.size(), 1u);
    const SourceFilter& filter = g_sourceFilterTable.at(&node_);
    EXPECT_TRUE(filter.knownSources.empty());
    EXPECT_TRUE(filter.selectedSources.empty());
    EXPECT_FALSE(filter.registryScanned);
}

TEST_F(BuildChannelQueryTest, ReadsTheTimeRangeAndTheChannelsOwnSources) {
    g_timeRangeFilter = From(kEight);
    g_sourceFilterTable[&node_].selectedSources = {L"A"};
    g_sourceFilterTable[&node_].knownSources = {L"A", L"Known"};
    g_sourceFilterTable[&other_].selectedSources = {L"B"};

    EXPECT_EQ(BuildChannelQuery(node_), BuildQueryText(L"Foo/Main", From(kEight), {L"A"}));
    EXPECT_EQ(BuildChannelQuery(other_), BuildQueryText(L"Foo/Other", From(kEight), {L"B"}));
}

TEST_F(BuildChannelQueryTest, GivesEqualTextsForEqualFilters) {
    g_timeRangeFilter = FromTo(kEight, kOneSecondPastNine);
    g_sourceFilterTable[&node_].selectedSources = NumberedSources(40);

    EXPECT_EQ(BuildChannelQuery(node_), BuildChannelQuery(node_));
}

TEST_F(BuildChannelQueryTest, TracesASkippedNameOncePerBuild) {
    g_sourceFilterTable[&node_].selectedSources = {L"x'\""};
    const test::TraceCapture trace;

    BuildChannelQuery(node_);
    EXPECT_EQ(trace.WideMessages().size(), 1u);
    BuildChannelQuery(node_);
    EXPECT_EQ(trace.WideMessages().size(), 2u);
}

}  // namespace
}  // namespace tavrin::query
