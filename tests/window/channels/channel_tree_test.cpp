#include <iterator>
#include <set>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

class ChannelTree : public WindowTest {};

struct ExpectedItem {
    int depth;
    const wchar_t* text;
    int image;
};

template <std::size_t kCount>
void ExpectItems(AppWindow& app, const ExpectedItem (&expected)[kCount]) {
    const std::vector<TreeEntry> entries = app.tree().Entries();
    ASSERT_EQ(entries.size(), kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        SCOPED_TRACE(expected[i].text);
        EXPECT_EQ(entries[i].depth, expected[i].depth);
        EXPECT_EQ(entries[i].text, expected[i].text);
        EXPECT_EQ(entries[i].image, expected[i].image);
        EXPECT_EQ(entries[i].selectedImage, expected[i].image);
    }
}

const std::vector<RecordedChannel> kManyKinds = {
    {.name = L"Acme-Foo-Bar-Baz/Debug", .type = L"Debug", .publisher = L"Acme-Foo-Bar-Baz"},
    {.name = L"Acme-Foo-Qux/Admin", .type = L"Admin", .publisher = L"Acme-Foo-Qux"},
    {.name = L"Acme-Foo-Qux/Analytic", .type = L"Analytic", .publisher = L"Acme-Foo-Qux"},
    {.name = L"Application"},
    {.name = L"ForwardedEvents", .type = L"Operational"},
    {.name = L"Security"},
    {.name = L"Zeta", .type = L"Operational"},
    {.name = L"Zeta-Operational", .type = L"Operational", .publisher = L"Zeta"},
    {.name = L"alpha", .type = L"Operational"},
    {.name = L"alphabet", .type = L"Operational"},
};

TEST_F(ChannelTree, ShowsFoldersAndChannelsInOrdinalOrderWithTheirIcons) {
    const Recording logs(kManyKinds);
    const ExpectedItem kItems[] = {
        {0, L"Event Viewer (Local)", 0},
        {1, L"Applications and Service Logs", 3},
        {2, L"Acme", 1},
        {3, L"Foo", 1},
        {4, L"Bar-Baz", 1},
        {5, L"Debug", 4},
        {4, L"Qux", 1},
        {5, L"Admin", 5},
        {5, L"Analytic", 6},
        {2, L"ForwardedEvents", 7},
        {2, L"Zeta", 7},
        {2, L"Zeta", 1},
        {3, L"Operational", 7},
        {2, L"alpha", 7},
        {2, L"alphabet", 7},
        {1, L"Windows Logs", 2},
        {2, L"Application", 5},
        {2, L"Security", 5},
    };
    AppWindow& app = Start(Serving(logs));
    std::vector<TreeEntry> entries = app.tree().Entries();
    ASSERT_EQ(entries.size(), std::size(kItems));
    // The order of siblings with the same name, here a folder and a channel, is not defined.
    if (entries[10].image == 1) {
        const ExpectedItem kFolderFirst[] = {
            {2, L"Zeta", 1}, {3, L"Operational", 7}, {2, L"Zeta", 7}};
        ExpectedItem items[std::size(kItems)];
        std::copy(std::begin(kItems), std::end(kItems), items);
        std::copy(std::begin(kFolderFirst), std::end(kFolderFirst), items + 10);
        ExpectItems(app, items);
        return;
    }
    ExpectItems(app, kItems);
}

TEST_F(ChannelTree, StartsCollapsedAndUnselected) {
    AppWindow& app = Start();
    for (const TreeEntry& entry : app.tree().Entries()) {
        EXPECT_FALSE(entry.expanded) << entry.text;
    }
    EXPECT_EQ(app.tree().Selected(), nullptr);
}

TEST_F(ChannelTree, EveryItemRefersToADifferentVertex) {
    AppWindow& app = Start();
    const std::vector<TreeEntry> entries = app.tree().Entries();
    std::set<LPARAM> vertices;
    for (const TreeEntry& entry : entries) {
        vertices.insert(entry.data);
    }
    EXPECT_EQ(vertices.size(), entries.size());
    EXPECT_EQ(*vertices.begin(), 0);
    EXPECT_EQ(*vertices.rbegin(), static_cast<LPARAM>(entries.size()) - 1);
}

TEST_F(ChannelTree, ABadNodeOnlyStopsTheFill) {
    const Recording logs(kSomeChannels);
    // The first channel has no type because reading it fails.
    AppWindow& app =
        Start(Serving(logs, FailCall(L"EvtGetChannelConfigProperty", 5, L"Application")));
    const ExpectedItem kItems[] = {
        {0, L"Event Viewer (Local)", 0},
        {1, L"Applications and Service Logs", 3},
        {2, L"Test", 1},
        {3, L"Provider", 1},
        {4, L"Operational", 7},
        {1, L"Windows Logs", 2},
    };
    ExpectItems(app, kItems);
    EXPECT_TRUE(app.SelectPath(kWindowsLogs));
    EXPECT_EQ(app.NodeName(), L"Windows Logs");
}

TEST_F(ChannelTree, AFailedEnumerationLeavesTheThreeFolders) {
    AppOptions options;
    options.script = FailCall(L"EvtOpenChannelEnum", 1722);
    AppWindow& app = Start(options);
    const ExpectedItem kItems[] = {
        {0, L"Event Viewer (Local)", 0},
        {1, L"Applications and Service Logs", 3},
        {1, L"Windows Logs", 2},
    };
    ExpectItems(app, kItems);
}

TEST_F(ChannelTree, AChannelWhoseConfigurationIsRefusedIsLeftOut) {
    const Recording logs(kSomeChannels);
    AppWindow& app = Start(Serving(logs, FailCall(L"EvtOpenChannelConfig", 5, L"Application")));
    EXPECT_EQ(app.tree().Find(kApplication), nullptr);
    EXPECT_NE(app.tree().Find(kSystem), nullptr);
}

TEST_F(ChannelTree, AClickSelectsAChannel) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"System", Events(3));
    AppWindow& app = Start(Serving(logs));
    const HTREEITEM item = app.tree().Find(kSystem);
    app.tree().EnsureVisible(item);
    ASSERT_TRUE(BringToFront(app.window()));
    app.Synchronise();
    ClickLeft(CentreOf(app.tree().TextRect(item)));
    EXPECT_TRUE(app.WaitForRows(3));
    EXPECT_EQ(app.tree().Selected(), item);
    EXPECT_EQ(app.NodeName(), L"System");
}

TEST_F(ChannelTree, TheArrowKeysSelectAndOpen) {
    const Recording logs(kSomeChannels);
    logs.WriteEvents(L"Application", Events(2));
    AppWindow& app = Start(Serving(logs));
    ASSERT_TRUE(BringToFront(app.window()));
    ASSERT_TRUE(GiveFocus(app.controls().tree));
    const struct {
        WORD key;
        const wchar_t* name;
    } kSteps[] = {
        {VK_HOME, L"Event Viewer (Local)"},
        {VK_RIGHT, L"Event Viewer (Local)"},
        {VK_DOWN, L"Applications and Service Logs"},
        {VK_DOWN, L"Windows Logs"},
        {VK_RIGHT, L"Windows Logs"},
        {VK_DOWN, L"Application"},
    };
    for (const auto& step : kSteps) {
        PressKey(step.key);
        EXPECT_TRUE(WaitUntil([&] { return app.NodeName() == step.name; })) << step.name;
    }
    EXPECT_TRUE(app.WaitForRows(2));
}

}  // namespace
}  // namespace tavrin::test
