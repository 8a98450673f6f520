#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

constexpr int kRecordIdColumn = 5;

// Events that no healthy log holds. The program shows whatever it can of each.
class BadData : public WindowTest {
protected:
    // Serves the events, oldest first, as the Application log and shows them.
    AppWindow& Show(const std::vector<RecordedEvent>& events, const std::wstring& script = L"") {
        logs_.WriteEvents(L"Application", events);
        return ShowFile(static_cast<int>(events.size()), script);
    }

    AppWindow& ShowFile(int events, const std::wstring& script = L"") {
        AppWindow& app = Start(Serving(logs_, script));
        EXPECT_TRUE(app.SelectPath(kApplication));
        EXPECT_TRUE(app.WaitForRows(events));
        return app;
    }

    std::vector<std::wstring> Column(int column) {
        std::vector<std::wstring> cells;
        for (int row = 0; row < app_->list().RowCount(); ++row) {
            cells.push_back(app_->list().Cell(row, column));
        }
        return cells;
    }

    bool WaitForSources(const std::vector<std::wstring>& names) {
        return WaitUntil([&] { return app_->sources().FirstColumn() == names; });
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(BadData, EventsOutOfOrderAreShownAsTheServiceOrdersThem) {
    AppWindow& app = Show({{.recordId = 70, .time = L"2024-03-05T00:00:00Z"},
                           {.recordId = 3, .time = L"2025-03-05T00:00:00Z", .message = L"of 3"},
                           {.recordId = 900, .time = L"1999-03-05T00:00:00Z"},
                           {.recordId = 12, .time = L"2024-03-04T00:00:00Z"}});
    EXPECT_EQ(Column(kRecordIdColumn), (std::vector<std::wstring>{L"12", L"900", L"3", L"70"}));
    app.list().Select(2);
    EXPECT_TRUE(WaitUntil([&] { return app.Details() == L"of 3"; }));
}

TEST_F(BadData, EventsThatShareARecordIdAreAllShown) {
    AppWindow& app = Show({{.recordId = 5, .eventId = 1, .message = L"first"},
                           {.recordId = 5, .eventId = 2, .message = L"second"},
                           {.recordId = 5, .eventId = 3, .message = L"third"}});
    EXPECT_EQ(Column(3), (std::vector<std::wstring>{L"3", L"2", L"1"}));
    for (int row = 0; row < 3; ++row) {
        app.list().Select(row);
        // The program asks the service by record id, which finds the first of the three.
        EXPECT_TRUE(WaitUntil([&] { return app.Details() == L"first"; })) << row;
    }
}

TEST_F(BadData, RecordIdsMayUseAll64Bits) {
    AppWindow& app = Show({{.recordId = 0, .message = L"of none"},
                           {.recordId = 9223372036854775807, .message = L"of the largest signed"},
                           {.recordId = 9223372036854775808U, .message = L"of the next"},
                           {.recordId = 18446744073709551615U, .message = L"of the last"}});
    EXPECT_EQ(Column(kRecordIdColumn),
              (std::vector<std::wstring>{L"18446744073709551615", L"9223372036854775808",
                                         L"9223372036854775807", L"0"}));
    const wchar_t* const kMessages[] = {L"of the last", L"of the next", L"of the largest signed"};
    for (int row = 0; row < 3; ++row) {
        app.list().Select(row);
        EXPECT_TRUE(WaitUntil([&] { return app.Details() == kMessages[row]; })) << row;
    }
    app.list().Select(3);
    app.Synchronise();
}

// The expected times need TZ=UTC, which CMake sets.
TEST_F(BadData, AnInvalidTimeShowsZeros) {
    const struct {
        std::uint64_t fileTime;
        const wchar_t* text;
    } kTimes[] = {
        {0, L"01/01/1601 00:00:00"},
        {1, L"01/01/1601 00:00:00"},
        {0x7FFF35F4F06C7FFF, L"31/12/30827 23:59:59"},
        {0x7FFF35F4F06C8000, L"01/01/30828 00:00:00"},
        {0x7FFFFFFFFFFFFFFF, L"14/09/30828 02:48:05"},
        {0x8000000000000000, L"00/00/00 00:00:00"},
        {0xFFFFFFFFFFFFFFFF, L"00/00/00 00:00:00"},  // a moment before 1601
    };
    std::wstring script;
    std::vector<std::wstring> expected;
    for (const auto& time : kTimes) {
        expected.emplace_back(time.text);
        script += RenderTime(time.fileTime, static_cast<unsigned>(expected.size()));
    }
    AppWindow& app = Show(Events(expected.size()), script);
    EXPECT_EQ(Column(1), expected);
    app.TypeFilter(L"/30828 ");
    EXPECT_TRUE(app.WaitForRows(2));
}

TEST_F(BadData, EveryLevelHasANameAndAnIconOrNone) {
    const wchar_t* const kNames[] = {L"Information",   L"Critical",     L"Error",
                                     L"Warning",       L"Information",  L"Verbose",
                                     L"Audit Success", L"Audit Failure"};
    constexpr int kImages[] = {0, 0, 2, 1, 0, 0, 3, 4};
    std::vector<RecordedEvent> events = Events(256);
    for (unsigned level = 0; level < 256; ++level) {
        events[level].level = level;
    }
    AppWindow& app = Show(events);
    for (unsigned level = 0; level < 256; ++level) {
        const int row = static_cast<int>(255 - level);
        const bool isKnown = level < std::size(kNames);
        EXPECT_EQ(app.list().Cell(row, 0), isKnown ? kNames[level] : L"Unknown") << level;
        EXPECT_EQ(app.list().Image(row), isKnown ? kImages[level] : 0) << level;
    }
    app.TypeFilter(L"unknown");
    EXPECT_TRUE(app.WaitForRows(256 - 8));
}

TEST_F(BadData, ProviderNamesAreCutInTheSourcesAndNotInTheList) {
    // The first three differ only after the 127th character.
    const std::wstring cut = std::wstring(120, L'p') + L"-middle";
    const std::wstring whole[] = {cut, cut + L"-a", cut + std::wstring(1873, L'b'),
                                  std::wstring(126, L'q')};
    std::vector<RecordedEvent> events = Events(std::size(whole));
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].provider = whole[i];
    }
    AppWindow& app = Show(events);
    EXPECT_EQ(Column(2), (std::vector<std::wstring>{
                             whole[3], (L"middle" + std::wstring(1873, L'b')).substr(0, 1023), L"a",
                             L"middle"}))
        << "cut to the test's buffer";
    EXPECT_TRUE(WaitForSources({cut, whole[3]}));
    app.TypeFilter(L"p-MIDDLE");
    EXPECT_TRUE(app.WaitForRows(3));
}

TEST_F(BadData, NamesWithControlCharactersAreShownAsTheyAre) {
    const std::wstring names[] = {L"bell\a", L"escape\x1B[31m", L"first\x01\x02\x1F", L"tab\tname"};
    std::vector<RecordedEvent> events = Events(std::size(names));
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].provider = names[i];
        events[i].message = std::nullopt;
    }
    AppWindow& app = Show(events);
    EXPECT_TRUE(WaitForSources({std::begin(names), std::end(names)}));
    for (int row = 0; row < 4; ++row) {
        const std::wstring& name = names[3 - row];
        EXPECT_EQ(app.list().Cell(row, 2), name);
        app.list().Select(row);
        EXPECT_TRUE(WaitUntil([&] {
            return app.Details().find(L"from source " + name) != std::wstring::npos;
        })) << row;
    }
}

TEST_F(BadData, AnEmbeddedZeroEndsANameAndAMessage) {
    logs_.WriteEvents(L"Application", {{.recordId = 1, .provider = L"seen{0}hidden"},
                                       {.recordId = 2, .message = L"seen{0}hidden"}});
    std::string log = ReadFile(logs_.FileOf(L"Application"));
    for (std::size_t at; (at = log.find("{0}")) != std::string::npos;) {
        log.replace(at, 3, "&#0;");
    }
    WriteFile(logs_.FileOf(L"Application"), log);
    AppWindow& app = ShowFile(2);
    EXPECT_EQ(app.list().Cell(1, 2), L"seen");
    EXPECT_TRUE(WaitForSources({L"Test-Provider", L"seen"}));
    app.list().Select(1);
    EXPECT_TRUE(WaitUntil([&] {
        return app.Details().find(L" from source seen cannot be found") != std::wstring::npos;
    })) << "the truncated name is not a registered provider";
    app.list().Select(0);
    EXPECT_TRUE(WaitUntil([&] { return app.Details() == L"seen"; }));
}

TEST(BadTree, OddPublisherNamesGetTheirFolders) {
    const std::wstring dashes(30, L'-');
    const Recording logs({
        {.name = dashes + L"/Thirty", .publisher = dashes},
        {.name = L"-/One", .publisher = L"-"},
        {.name = L"A-/End", .publisher = L"A-"},
        {.name = L"A--B/Gap", .publisher = L"A--B"},
        {.name = L"Of nobody", .publisher = L""},
    });
    const struct {
        int depth;
        std::wstring text;
    } kItems[] = {
        {0, L"Event Viewer (Local)"},
        {1, L"Applications and Service Logs"},
        {2, L""},  // the empty part before the first dash
        {3, L""},
        {4, std::wstring(28, L'-')},
        {5, L"Thirty"},
        {3, L"One"},
        {2, L"A"},
        {3, L""},
        {4, L"B"},
        {5, L"Gap"},
        {3, L"End"},
        {2, L"Of nobody"},
        {1, L"Windows Logs"},
    };
    AppWindow app(Serving(logs));
    ASSERT_TRUE(app.WaitForTree());
    const std::vector<TreeEntry> entries = app.tree().Entries();
    ASSERT_EQ(entries.size(), std::size(kItems));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].depth, kItems[i].depth) << i;
        EXPECT_EQ(entries[i].text, kItems[i].text) << i;
    }
    EXPECT_TRUE(ClosesCleanly(app));
}

}  // namespace
}  // namespace tavrin::test
