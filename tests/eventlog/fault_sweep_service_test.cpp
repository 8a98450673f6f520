// Fails every call of the service in turn, with every code that the service is known to return.
// The outcome must match the table and no handle may stay open.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "eventlog/channels/channel_enumeration.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/details/event_details.h"
#include "eventlog/loading/channel_activity.h"
#include "eventlog/loading/record_count.h"
#include "replay/replay_control.h"
#include "support/fresh_thread.h"
#include "support/trace_capture.h"

#include "posted_messages.h"
#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

constexpr std::uint32_t kCodes[] = {2, 5, 122, 1168, 1722, 15007, 15011, 15022, 15027};

// One call of a run. `number` counts the calls of `function` from 1.
struct CallOfRun {
    const wchar_t* function;
    std::uint64_t number;
};

std::wstring FailScript(const CallOfRun& call, std::uint32_t code) {
    return std::wstring(L"fail ") + call.function + L" code=" + std::to_wstring(code) + L" call=" +
           std::to_wstring(call.number);
}

std::string Title(const CallOfRun& call, std::uint32_t code) {
    return testing::PrintToString(FailScript(call, code));
}

class FaultSweep : public ServiceTest {
protected:
    FaultSweep() {
        recording_.AddChannel({.name = L"Acme/Log", .publisher = L"Acme"});
        recording_.AddChannel({.name = L"System"});
        recording_.WriteEvents(L"System", test::Events(3));
    }

    // A sweep is complete only if its table has a row for each call of a run.
    template <typename Rows>
    static void ExpectEveryCallListed(const Rows& rows) {
        std::map<std::wstring, std::uint64_t> listed;
        for (const auto& row : rows) {
            ++listed[row.call.function];
        }
        std::map<std::wstring, std::uint64_t> made;
        for (const replay::LoggedCall& call : replay::TakeCallLog()) {
            if (call.function != L"EvtClose") {
                ++made[call.function];
            }
        }
        EXPECT_EQ(listed, made);
    }

    static void ExpectNoHandle() {
        EXPECT_EQ(replay::DescribeOpenHandles(), std::vector<std::wstring>());
        EXPECT_EQ(replay::LedgerFaults(), std::vector<std::wstring>());
    }

    test::TraceCapture trace_;
};

// The outcome of a load with its subscription.
struct LoadOutcome {
    bool failed;  // loadResult holds the failed call's code
    std::uint64_t loadedCount;
    int loading;
};

TEST_F(FaultSweep, OfALoad) {
    const struct {
        CallOfRun call;
        LoadOutcome outcome;
    } rows[] = {
        {{L"EvtSubscribe", 1}, {false, 3, 1}},
        {{L"EvtNext", 1}, {false, 3, 1}},  // of the subscription
        {{L"EvtQuery", 1}, {true, 0, 0}},
        {{L"EvtSeek", 1}, {true, 0, 0}},
        {{L"EvtNext", 2}, {true, 0, 0}},
        {{L"EvtCreateRenderContext", 1}, {false, 0, 1}},
        {{L"EvtRender", 1}, {false, 3, 1}},
        {{L"EvtRender", 2}, {false, 3, 1}},
        {{L"EvtRender", 3}, {false, 3, 1}},
        {{L"EvtNext", 3}, {true, 3, 1}},
    };
    Serve();
    const auto load = [] {
        auto node = std::make_shared<EventNode>(L"System", L"System", 0x006u);
        node->loading = 1;
        ChannelActivityTable table;
        StartChannelActivity(nullptr, node, table);
        table.at(node.get()).worker.join();
        EndChannelActivity(table.at(node.get()));
        return node;
    };
    load();
    ExpectEveryCallListed(rows);

    for (const auto& [call, outcome] : rows) {
        for (const std::uint32_t code : kCodes) {
            SCOPED_TRACE(Title(call, code));
            Script(FailScript(call, code));

            const auto node = load();

            EXPECT_EQ(node->loadResult.load(), outcome.failed ? code : 0);
            EXPECT_EQ(node->loadedCount.load(), outcome.loadedCount);
            EXPECT_EQ(node->recordList.size(), outcome.loadedCount);
            EXPECT_EQ(node->loading.load(), outcome.loading);
            EXPECT_EQ(node->done.load() != 0, !outcome.failed);
            ExpectNoHandle();
        }
    }
}

constexpr std::wstring_view kUntouched = L"as it was";

// One call of FormatEventDescription and the outcome of its failure.
struct DescriptionCall {
    CallOfRun call;
    bool opens;                  // the call opens the event; otherwise it formats the message
    std::uint32_t ownCode;       // result of every failure; 0: the call's own code
    std::uint32_t fallbackCode;  // code that yields the fallback text; 0: none
    std::uint32_t retryCode;     // code that makes the program retry; 0: none
};

struct Description {
    std::uint32_t code;
    std::wstring_view beginning;
};

// The expected outcome if this call fails with this code.
Description Expected(const DescriptionCall& call, std::uint32_t code) {
    const std::uint32_t result = call.ownCode != 0 ? call.ownCode : code;
    if (call.opens && result == 1168) {
        return {result, L"This event is no longer in the log"};
    }
    if (code == call.fallbackCode) {
        return {result,
                L"The description for Event ID 1 from source Test-Provider cannot be found."};
    }
    return {result, kUntouched};
}

TEST_F(FaultSweep, OfADescription) {
    const DescriptionCall rows[] = {
        {{L"EvtCreateBookmark", 1}, true, 0, 0, 0},
        {{L"EvtQuery", 1}, true, 0, 0, 0},
        {{L"EvtSeek", 1}, true, 0, 0, 0},
        {{L"EvtNext", 1}, true, 1168, 0, 0},
        {{L"EvtCreateRenderContext", 1}, true, 0, 0, 0},
        {{L"EvtRender", 1}, true, 0, 0, 122},
        {{L"EvtOpenPublisherMetadata", 1}, false, 0, 2, 0},
        {{L"EvtFormatMessage", 1}, false, 0, 15027, 122},
        {{L"EvtFormatMessage", 2}, false, 15027, 0, 0},
    };
    Serve();
    std::wstring text;
    const auto describe = [&text] {
        std::uint32_t code = 99;
        text = kUntouched;
        test::OnFreshThread(
            [&] { code = FormatEventDescription(L"System", 2, 1, L"Test-Provider", text); });
        return code;
    };
    describe();
    ExpectEveryCallListed(rows);

    for (const DescriptionCall& row : rows) {
        for (const std::uint32_t code : kCodes) {
            SCOPED_TRACE(Title(row.call, code));
            Script(FailScript(row.call, code));

            const std::uint32_t result = describe();

            ExpectNoHandle();
            if (code != row.retryCode) {
                EXPECT_EQ(result, Expected(row, code).code);
                EXPECT_TRUE(text.starts_with(Expected(row, code).beginning));
            }
        }
    }
}

// If the message's second call fails, a third call without the publisher decides the outcome.
TEST_F(FaultSweep, OfTheCallsForAMessage) {
    Serve();
    for (const std::uint32_t code : kCodes) {
        SCOPED_TRACE(code);
        Script(L"fail EvtFormatMessage from=2 code=" + std::to_wstring(code));
        std::wstring text(kUntouched);
        test::OnFreshThread([&] {
            EXPECT_EQ(FormatEventDescription(L"System", 2, 1, L"Test-Provider", text), code);
        });

        EXPECT_EQ(text, kUntouched);
        ExpectNoHandle();
    }
}

// Three fixed folders, the publisher's folder with its channel, and System.
constexpr std::size_t kFixedFolders = 3;
constexpr std::size_t kWholeTree = 6;

TEST_F(FaultSweep, OfTheChannelTree) {
    Serve();
    for (const wchar_t* function : {L"EvtOpenChannelEnum", L"EvtNextChannelPath",
                                    L"EvtOpenChannelConfig", L"EvtGetChannelConfigProperty"}) {
        for (const std::uint32_t code : kCodes) {
            bool reached = true;
            for (std::uint64_t n = 1; reached; ++n) {
                const CallOfRun call{function, n};
                SCOPED_TRACE(Title(call, code));
                Script(FailScript(call, code));
                const std::uint64_t before = replay::CallsOf(function);
                ChannelsTree tree;

                const std::uint32_t result = EventWrapper().BuildChannlesTree(tree);

                reached = replay::CallsOf(function) - before >= n;
                const bool noList = reached && function == std::wstring(L"EvtOpenChannelEnum");
                EXPECT_EQ(result, noList ? 1u : 0u);
                // A path that cannot be fetched ends the list. Other calls cost one channel at
                // most, perhaps with its publisher's folder.
                const bool endsList = noList || function == std::wstring(L"EvtNextChannelPath");
                EXPECT_LE(tree.VertexCount(), noList ? kFixedFolders : kWholeTree);
                EXPECT_GE(tree.VertexCount(), endsList ? kFixedFolders : kWholeTree - 2);
                EXPECT_TRUE(reached || tree.VertexCount() == kWholeTree);
                ExpectNoHandle();
                ASSERT_LT(n, 100u) << "the number of calls must be finite";
            }
        }
    }
}

TEST_F(FaultSweep, OfARecordCount) {
    Serve();
    PostedMessages posted;
    for (const wchar_t* function : {L"EvtOpenLog", L"EvtGetLogInfo"}) {
        for (const std::uint32_t code : kCodes) {
            const CallOfRun call{function, 1};
            SCOPED_TRACE(Title(call, code));
            Script(FailScript(call, code));

            CountChannelRecords({L"System", nullptr, 0});

            EXPECT_TRUE(posted.Take().empty());
            EXPECT_EQ(trace_.NarrowMessages().back(), std::wstring(function) + L" failed");
            ExpectNoHandle();
        }
    }
}

}  // namespace
}  // namespace tavrin::eventlog
