#include <algorithm>
#include <regex>

#include "resource.h"
#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

// Checks the running program's debugger output.
class Trace : public WindowTest {
protected:
    bool WaitForLine(const std::wstring& message) const {
        return output_.WaitFor(app_->process().id(), L"] => " + message + L"\n", kPatience);
    }

    // The messages so far, without their thread ids.
    std::vector<std::wstring> Messages() const {
        std::vector<std::wstring> messages;
        for (const std::wstring& line : output_.Lines(app_->process().id())) {
            messages.push_back(line.substr(std::min(line.find(L"] => ") + 5, line.size())));
        }
        return messages;
    }

    // Expects these messages in this order, possibly with others in between.
    void ExpectInOrder(const std::vector<std::wstring>& expected) const {
        auto next = expected.begin();
        for (const std::wstring& message : Messages()) {
            if (next != expected.end() && message == *next) {
                ++next;
            }
        }
        EXPECT_EQ(next, expected.end()) << "missing: " << *next;
    }

    DebugOutput output_;
    const Recording logs_{kSomeChannels};
};

TEST_F(Trace, EachLineNamesItsThreadAndEndsWithOneLineFeed) {
    Start();
    ASSERT_TRUE(WaitForLine(L"EventWrapper::BuildChannlesTree completed."));
    const std::wregex form(L"\\[Thread [1-9][0-9]*\\] => [\\s\\S]*\n");
    for (const std::wstring& line : output_.Lines(app_->process().id())) {
        EXPECT_TRUE(std::regex_match(line, form)) << line;
        EXPECT_EQ(line.find(L'\r'), std::wstring::npos);
    }
}

TEST_F(Trace, ReportsTheBuildingOfTheTree) {
    Start(Serving(logs_));
    // The root, the two top folders, the publisher's two folders, and three channels.
    ASSERT_TRUE(WaitForLine(L"Number of vertices: 8"));
    ExpectInOrder({L"Initiating BuildChannlesTree of Event Log API Wrapper.\n",
                   L"EventWrapper::BuildChannlesTree starting...\n",
                   L"EventWrapper::BuildChannlesTree completed.\n",
                   L"Got BuildChannlesTree completion from Event Log API Wrapper.\n",
                   L"Number of vertices: 8\n"});
}

TEST_F(Trace, TheBuilderAndTheWindowWriteFromDifferentThreads) {
    Start(Serving(logs_));
    ASSERT_TRUE(WaitForLine(L"Number of vertices: 8"));
    const auto threadOf = [&](const std::wstring& message) {
        for (const std::wstring& line : output_.Lines(app_->process().id())) {
            if (line.find(message) != std::wstring::npos) {
                return line.substr(0, line.find(L']'));
            }
        }
        return std::wstring();
    };
    const std::wstring window = threadOf(L"Initiating BuildChannlesTree");
    EXPECT_NE(window, threadOf(L"BuildChannlesTree starting..."));
    EXPECT_EQ(window, threadOf(L"Number of vertices"));
    const DWORD thread = GetWindowThreadProcessId(app_->window(), nullptr);
    EXPECT_EQ(window, L"[Thread " + std::to_wstring(thread));
}

TEST_F(Trace, ReportsALoad) {
    logs_.WriteEvents(L"Application", Events(300));
    Start(Serving(logs_));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(WaitForLine(L"Finished draining. Killing timer."));
    ASSERT_TRUE(WaitForLine(L"Got Node Record Count completion from Event Log API Wrapper: 300"));
    ExpectInOrder({L"Drain Timer was not running.Setting drain node.\n",
                   L"Loaded 128 events to channel: Application\n",
                   L"\n\nInside thread Loop - i: 0 - ret: 128 - loaded: 128\n",
                   L"\n\nInside thread Loop - i: 1 - ret: 128 - loaded: 256\n",
                   L"Loaded 44 events to channel: Application\n",
                   L"\n\nInside thread Loop - i: 2 - ret: 44 - loaded: 300\n",
                   L"\n\nInside thread Loop - i: 3 - ret: 0 - loaded: 300\n",
                   L"Finished draining. Killing timer.\n"});
}

TEST_F(Trace, ReportsASwitchToAFolder) {
    logs_.WriteEvents(L"Application", Events(300));
    const Gate gate;
    Start(Serving(logs_, gate.Block(L"EvtNext", 3, L"Application")));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    EXPECT_TRUE(WaitForLine(L"User switched channels. Killing timer."));
    gate.Open();
}

TEST_F(Trace, ReportsASwitchToAnotherChannel) {
    logs_.WriteEvents(L"Application", Events(300));
    const Gate gate;
    Start(Serving(logs_, gate.Block(L"EvtNext", 3, L"Application")));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->SelectPath(kSystem));
    EXPECT_TRUE(WaitForLine(L"Drain Timer was running. Updating drain node."));
    gate.Open();
}

TEST_F(Trace, ReportsOnlyTheRefreshOfAChannel) {
    Start(Serving(logs_));
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    app_->Command(IDM_REFRESH);
    ASSERT_TRUE(
        app_->SelectPath({L"Applications and Service Logs", L"Test", L"Provider", L"Operational"}));
    app_->Command(IDM_REFRESH);
    EXPECT_TRUE(WaitForLine(L"Refreshing Test-Provider/Operational"));
    const std::vector<std::wstring> messages = Messages();
    EXPECT_EQ(std::ranges::count_if(
                  messages,
                  [](const std::wstring& message) { return message.starts_with(L"Refreshing"); }),
              1);
}

TEST_F(Trace, ReportsARefusedSubscription) {
    Start(Serving(logs_, FailCall(L"EvtSubscribe", 1722)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(WaitForLine(L"EvtSubscribe failed for Application: 1722"));
}

TEST_F(Trace, ReportsAFailedPage) {
    logs_.WriteEvents(L"Application", Events(300));
    Start(Serving(logs_, FailCall(L"EvtNext", 15011, L"Application", 3)));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    EXPECT_TRUE(WaitForLine(L"EvtNext failed with 15011"));
}

TEST_F(Trace, ReportsAppliedFilters) {
    logs_.WriteEvents(L"Application", Events(3));
    Start(Serving(logs_));
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForRows(3));
    ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() == 1; }));
    app_->sources().SetChecked(0, true);
    EXPECT_TRUE(WaitForLine(
        L"Applying filters to Application: <QueryList><Query Id='0' Path='Application'><Select "
        L"Path='Application'>*[System[Provider[@Name=&quot;Test-Provider&quot;]]]</Select></Query>"
        L"</QueryList>"));
    app_->sources().SetChecked(0, false);
    EXPECT_TRUE(WaitForLine(L"Applying filters to Application: *"));
}

TEST_F(Trace, ReportsABadNodeInTheTree) {
    Start(Serving(logs_, FailCall(L"EvtGetChannelConfigProperty", 5, L"Application")));
    EXPECT_TRUE(WaitForLine(L"Node Flags: missing channel type"));
}

TEST_F(Trace, ATreeItemWithoutAVertexIsReportedAndHarmless) {
    Start(Serving(logs_));
    const struct {
        LPARAM data;
        const wchar_t* line;
    } kItems[] = {{-1, L"Null vertex descriptor"}, {8, L"Vertex descriptor out of range"}};
    for (const auto& item : kItems) {
        app_->tree().SetData(app_->tree().Find(kSystem), item.data);
        ASSERT_TRUE(app_->SelectPath(kSystem));
        EXPECT_TRUE(WaitForLine(item.line));
        ASSERT_TRUE(app_->SelectPath(kApplication));
        EXPECT_EQ(app_->NodeName(), L"Application");
    }
}

}  // namespace
}  // namespace tavrin::test
