#include "ui/commands.h"

#include <memory>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "resource.h"
#include "support/trace_capture.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

constexpr WORD kFromMenu = 0;

TEST(OnCommand, ReturnsFalseForOtherCommands) {
    const struct {
        WORD id;
        WORD notification;
    } cases[] = {
        // The window handles only changes of an edit and clicks of the button.
        {IDC_SOURCES_SEARCH, EN_SETFOCUS},
        {IDC_SOURCES_SEARCH, kFromMenu},
        {IDC_SHOW_ALL_SOURCES, BN_DBLCLK},
        {IDC_FILTER_EDIT, EN_UPDATE},
        {IDC_FILTER_EDIT, kFromMenu},
        {32772, kFromMenu},
        {32776, kFromMenu},
        {0, kFromMenu},
    };
    MainWindow window(nullptr);
    for (const auto& [id, notification] : cases) {
        EXPECT_FALSE(OnCommand(window, id, notification)) << id << ", " << notification;
    }
}

TEST(OnCommand, RefreshesNothingForAFolder) {
    const test::TraceCapture trace;
    MainWindow window(nullptr);
    window.currentNode =
        std::make_shared<eventlog::EventNode>(L"Windows Logs", L"Windows-Logs", 0x041u);
    window.recordCounts[window.currentNode.get()] = 7;

    EXPECT_TRUE(OnCommand(window, IDM_REFRESH, kFromMenu));

    EXPECT_EQ(window.recordCounts.size(), 1u);
    EXPECT_TRUE(trace.Calls().empty());
}

TEST(OnCommand, SetsNoPickerWithoutASelectedRow) {
    MainWindow window(nullptr);

    EXPECT_TRUE(OnCommand(window, IDM_SET_AS_FROM, kFromMenu));
    EXPECT_TRUE(OnCommand(window, IDM_SET_AS_TO, kFromMenu));

    EXPECT_FALSE(window.pickerOn[0]);
    EXPECT_FALSE(window.pickerOn[1]);
}

}  // namespace
}  // namespace tavrin::ui
