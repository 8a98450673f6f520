#include "support/wait_until.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

class BadInput : public WindowTest {};

TEST_F(BadInput, EveryLegalChannelNameLoads) {
    const std::wstring kNames[] = {
        L"O'Brien & Sons (100%)", L"a;b,c=d+e",   L"Gr\u00FC\u00DFe \u4F60\u597D \u0645\u0631",
        L"dots...and  blanks",    L"#[]{}~!@$^`", L"Some/Deep/Path",
    };
    std::vector<RecordedChannel> channels;
    for (const std::wstring& name : kNames) {
        channels.push_back({.name = name});
    }
    const Recording logs(channels);
    // Each channel holds one event more than the one before, which distinguishes their loads.
    std::size_t count = 0;
    for (const std::wstring& name : kNames) {
        logs.WriteEvents(name, Events(++count, {.message = L"Of " + name}));
    }
    AppWindow& app = Start(Serving(logs));
    int rows = 0;
    for (const std::wstring& name : kNames) {
        SCOPED_TRACE(name);
        ++rows;
        ASSERT_TRUE(app.SelectPath({L"Applications and Service Logs", name}));
        EXPECT_EQ(app.NodeName(), name);
        ASSERT_TRUE(app.WaitForRows(rows));
        EXPECT_TRUE(WaitUntil([&] { return app.Total() == std::to_wstring(rows); }));
        app.list().Select(0);
        EXPECT_TRUE(WaitUntil([&] { return app.Details() == L"Of " + name; }));
    }
}

TEST_F(BadInput, AnEventWithoutAProcessShowsProcessZero) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", {{.recordId = 1, .processId = std::nullopt}});
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(1));
    EXPECT_EQ(app.list().Cell(0, 4), L"0");
}

TEST_F(BadInput, AnAlmostEmptyEventIsShownAndHarmsNoOther) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(2));
    std::string log = ReadFile(logs.FileOf(L"Application"));
    const std::string bare =
        "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
        "<Provider/><EventRecordID>3</EventRecordID></System></Event>\r\n";
    log.insert(log.find("</Events>"), bare);
    WriteFile(logs.FileOf(L"Application"), log);
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(3));
    EXPECT_EQ(app.list().Cell(0, 0), L"Information");
    EXPECT_EQ(app.list().Cell(0, 2), L"");
    EXPECT_EQ(app.list().Cell(0, 3), L"0");
    EXPECT_EQ(app.list().Cell(1, 5), L"2");
    app.list().Select(0);
    app.list().Select(1);
    EXPECT_TRUE(WaitUntil([&] { return app.Details() == L"A message."; }));
}

TEST_F(BadInput, LongValuesAndLoneSurrogatesHarmNothing) {
    const std::wstring longText(10240, L'v');
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application",
                     {{.recordId = 1, .message = L"the first"},
                      {.recordId = 2, .provider = L"before {lone} after", .message = std::nullopt},
                      {.recordId = 3,
                       .data = L"<EventData><Data Name='a'>" + longText + L"</Data></EventData>",
                       .message = longText},
                      {
                          .recordId = 4,
                          .provider = std::wstring(200, L'p'),
                      }});
    std::string log = ReadFile(logs.FileOf(L"Application"));
    log.replace(log.find("{lone}"), 6, "\xED\xA0\xBD");
    WriteFile(logs.FileOf(L"Application"), log);
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(app.WaitForRows(4));
    EXPECT_EQ(app.list().Cell(0, 2), std::wstring(200, L'p'));
    const struct {
        int row;
        const std::wstring text;
    } kTexts[] = {{1, longText}, {3, L"the first"}};
    for (const auto& expected : kTexts) {
        app.list().Select(expected.row);
        EXPECT_TRUE(WaitUntil([&] { return app.Details() == expected.text; })) << expected.row;
    }
    app.list().Select(2);
    app.TypeFilter(L"before");
    EXPECT_TRUE(app.WaitForRows(1));
}

}  // namespace
}  // namespace tavrin::test
