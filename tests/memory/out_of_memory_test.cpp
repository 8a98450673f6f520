// Fails the n-th allocation of an operation, or all from the n-th on, for n = 1, 2, ... until the
// operation needs fewer. The operation may fail, but it must neither crash nor leak, and it must
// succeed when it is repeated.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

#include <windows.h>

#include <gtest/gtest.h>

#include "diag/debug_trace.h"
#include "eventlog/channels/channel_enumeration.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/details/event_details.h"
#include "eventlog/loading/event_loading.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"
#include "eventlog/records/record_disposer.h"
#include "query/event_rows.h"
#include "query/filter_state.h"
#include "query/query_builder.h"
#include "query/source_names.h"
#include "support/failing_allocations.h"
#include "support/fresh_thread.h"
#include "support/recording.h"
#include "support/test_record.h"

#include "eventlog/service_fixture.h"

namespace tavrin {
namespace {

using eventlog::EventNode;
using test::FailingAllocations;
using test::Shortage;

constexpr std::uint32_t kAdminChannel = 0x006;
constexpr int kEvents = 20;
constexpr int kTwoPages = 150;

class OutOfMemory : public eventlog::ServiceTest {
protected:
    void SetUp() override {
        recording_.AddChannel({.name = L"System"});
        recording_.AddChannel({.name = L"Acme-Foo-Bar/Admin", .publisher = L"Acme-Foo-Bar"});
        recording_.WriteEvents(L"System", test::Events(kEvents));
        recording_.AddChannel({.name = L"Large"});
        recording_.WriteEvents(L"Large", test::Events(kTwoPages));
        Serve();
    }

    // Runs the operation once per stride-th allocation, and fails that allocation. Runs `check`
    // after each run, without failing allocations.
    static void Sweep(const char* what, const std::function<void()>& operation,
                      const std::function<void()>& check, int stride = 1) {
        int failed = 0;
        for (const Shortage shortage : {Shortage::Once, Shortage::FromThenOn}) {
            for (int n = 1;; n += stride) {
                SCOPED_TRACE(std::string(what) + ", allocation " + std::to_string(n));
                const bool hasFailed = RunWithFailure(operation, n, shortage);
                check();
                if (!hasFailed || testing::Test::HasFailure()) {
                    break;
                }
                ++failed;
            }
        }
        EXPECT_GT(failed, 0) << what;
        std::cout << what << ": " << failed << " failures\n";
    }

private:
    static bool RunWithFailure(const std::function<void()>& operation, int n, Shortage shortage) {
        const FailingAllocations failing(n, shortage);
        try {
            operation();
        } catch (const std::exception&) {
            // The operation may throw.
        }
        return failing.HaveFailed();
    }
};

// A fresh thread allocates its own buffer and render context.
void LoadToTheEnd(EventNode& node) {
    test::OnFreshThread([&node] {
        eventlog::UniqueEvt query;
        while (node.done.load() == 0 && eventlog::LoadChannelEvents(node, query) >= 0) {
        }
    });
}

void ExpectAllRows(query::EventRows& rows, std::size_t count) {
    ASSERT_EQ(rows.RowCount(), count);
    for (std::size_t row = 0; row < count; ++row) {
        EXPECT_EQ(rows.Row(static_cast<std::int64_t>(row))->recordId, count - row);
    }
}

void ExpectIndexOfEachRecord(const EventNode& node) {
    ASSERT_EQ(node.recordList.size(), node.loadedCount.load());
    for (std::size_t i = 0; i < node.recordList.size(); ++i) {
        const eventlog::SearchKey& key = node.searchIndex.keys[i];
        EXPECT_EQ(key.time, eventlog::PackTime(node.recordList[i]->timeText));
        ASSERT_LT(key.kind, node.searchIndex.kinds.size());
        EXPECT_EQ(std::wstring(node.searchIndex.kinds[key.kind]->providerName),
                  node.recordList[i]->providerName);
    }
}

TEST_F(OutOfMemory, BuildingTheTree) {
    std::unique_ptr<eventlog::ChannelsTree> tree;
    const auto build = [&tree] {
        tree = std::make_unique<eventlog::ChannelsTree>();
        static_cast<void>(eventlog::EventWrapper().BuildChannlesTree(*tree));
    };
    Sweep("building the tree", build, [&] {
        build();
        EXPECT_EQ(tree->VertexCount(),
                  9u);  // three fixed folders, three publisher folders, three logs
    });
}

TEST_F(OutOfMemory, ALoadingStepWithItsHandOver) {
    EventNode node(L"System", L"System", kAdminChannel);
    Sweep(
        "a loading step",
        [&node] {
            test::OnFreshThread([&node] {
                eventlog::UniqueEvt query;
                static_cast<void>(eventlog::LoadChannelEvents(node, query));
                static_cast<void>(eventlog::LoadChannelEvents(node, query));
            });
        },
        [&node] {
            ExpectIndexOfEachRecord(node);
            eventlog::ResetForLoad(node, L"");
            LoadToTheEnd(node);
            EXPECT_EQ(node.loadedCount.load(), std::uint64_t{kEvents});
            ExpectIndexOfEachRecord(node);
            eventlog::ResetForLoad(node, L"");
        });
}

// No reset: a load that failed before its first record is repeated without one.
TEST_F(OutOfMemory, HandingOverAfterAFailure) {
    eventlog::EventRecordList page;
    for (const wchar_t* provider : {L"A", L"B", L"A"}) {
        page.push_back(test::MakeRecord({.provider = provider}));
    }
    const auto node = std::make_unique<std::unique_ptr<EventNode>>();
    const auto renew = [&node] {
        *node = std::make_unique<EventNode>(L"System", L"System", kAdminChannel);
    };
    renew();
    Sweep(
        "handing over", [&] { eventlog::AppendPage(**node, page); },
        [&] {
            ExpectIndexOfEachRecord(**node);
            eventlog::AppendPage(**node, {test::MakeRecord({.provider = L"B"})});
            eventlog::AppendPage(**node, page);
            ExpectIndexOfEachRecord(**node);
            EXPECT_EQ((*node)->searchIndex.kinds.size(), 2u);
            renew();
        });
}

TEST_F(OutOfMemory, TakingABatchAndFiltering) {
    EventNode node(L"System", L"System", kAdminChannel);
    LoadToTheEnd(node);
    query::EventRows rows;
    query::SourceSet providers;
    Sweep(
        "taking a batch",
        [&] {
            providers.merge(rows.TakeBatch(node).providers);
            rows.AppendMatching(L"test-pro");
        },
        [&] {
            providers.merge(rows.TakeBatch(node).providers);
            rows.AppendMatching(L"test-pro");
            ExpectAllRows(rows, kEvents);
            EXPECT_EQ(providers, query::SourceSet{L"Test-Provider"});
            rows = {};
            providers.clear();
            eventlog::RewindRecords(node);
        });
}

TEST_F(OutOfMemory, Filtering) {
    EventNode node(L"System", L"System", kAdminChannel);
    LoadToTheEnd(node);
    query::EventRows rows;
    rows.TakeBatch(node);
    Sweep(
        "filtering", [&] { rows.Rebuild(L"a text that is longer than a short string"); },
        [&] {
            rows.AppendMatching(L"test-pro");
            rows.Rebuild(L"test-pro");
            ExpectAllRows(rows, kEvents);
        });
}

TEST_F(OutOfMemory, AReset) {
    EventNode node(L"System", L"System", kAdminChannel);
    eventlog::RecordDisposer disposer;
    LoadToTheEnd(node);
    const std::wstring query = L"*[System[(Level=1 or Level=2 or Level=3)]]";
    Sweep(
        "a reset", [&] { disposer.Dispose(eventlog::ResetForLoad(node, query)); },
        [&] {
            disposer.Dispose(eventlog::ResetForLoad(node, L""));
            EXPECT_TRUE(node.recordList.empty());
            LoadToTheEnd(node);
            EXPECT_EQ(node.loadedCount.load(), std::uint64_t{kEvents});
        });
}

TEST_F(OutOfMemory, BuildingAQuery) {
    const query::TimeRangeFilter range{true, true, 133'500'000'000'000'000,
                                       133'600'000'000'000'000};
    query::SourceSet sources{L"with \" and '"};
    for (int i = 0; i < 20; ++i) {
        sources.insert(L"Acme-Source-" + std::to_wstring(i));
    }
    const std::wstring expected = query::BuildQueryText(L"System", range, sources);
    Sweep(
        "building a query", [&] { query::BuildQueryText(L"System", range, sources); },
        [&] { EXPECT_EQ(query::BuildQueryText(L"System", range, sources), expected); });
}

TEST_F(OutOfMemory, SourceNames) {
    const query::SourceFilter known{{L"a name beyond short strings", L"another such name"},
                                    {L"a selected name that is long"},
                                    false};
    query::SourceFilter filter = known;
    Sweep(
        "source names",
        [&] {
            query::ScanRegistrySources(L"System", filter);
            query::ShownSourceNames(filter, L"name");
        },
        [&] {
            query::ScanRegistrySources(L"System", filter);
            EXPECT_TRUE(filter.registryScanned);
            EXPECT_EQ(query::ShownSourceNames(filter, L"a").size(), 3u);
            filter = known;
        });
}

TEST_F(OutOfMemory, ADescription) {
    std::wstring text;
    std::uint32_t code = 0;
    const auto describe = [&text, &code] {
        test::OnFreshThread([&text, &code] {
            code = eventlog::FormatEventDescription(L"System", 7, 1, L"Test-Provider", text);
        });
    };
    describe();
    const std::wstring expected = text;
    const std::uint32_t expectedCode = code;
    Sweep("a description", describe, [&] {
        text.clear();
        describe();
        EXPECT_EQ(code, expectedCode);
        EXPECT_EQ(text, expected);
    });
}

TEST_F(OutOfMemory, ATraceLine) {
    const std::wstring wide(100, L'w');
    const std::runtime_error error(std::string(100, 'n'));
    Sweep(
        "a trace line",
        [&] {
            diag::TraceException(error);
            diag::DebugTrace(wide);
        },
        [&] { diag::DebugTrace(wide); });
}

// The whole loader on its thread. It must end, and its node must be usable and loadable again.
TEST_F(OutOfMemory, ALoader) {
    const auto node = std::make_shared<EventNode>(L"Large", L"Large", kAdminChannel);
    eventlog::BeginLoad(*node);
    Sweep(
        "a loader", [&] { eventlog::StartChannelLoader(nullptr, node).join(); },
        [&] {
            if (node->done.load() == 0 && node->loadResult.load() != 0) {
                EXPECT_EQ(node->loadResult.load(), 8u);
                EXPECT_EQ(node->loading.load(), node->loadedCount.load() == 0 ? 0u : 1u);
            }
            ExpectIndexOfEachRecord(*node);
            eventlog::ResetForLoad(*node, L"");
            ASSERT_TRUE(eventlog::BeginLoad(*node));
            eventlog::StartChannelLoader(nullptr, node).join();
            EXPECT_EQ(node->loadedCount.load(), std::uint64_t{kTwoPages});
            EXPECT_EQ(node->loadResult.load(), 0u);
            eventlog::ResetForLoad(*node, L"");
            eventlog::BeginLoad(*node);
        },
        7);
}

}  // namespace
}  // namespace tavrin
