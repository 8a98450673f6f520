// What loading costs: the program's loader against a bare loop of the same calls, and
// the memory that the loaded records take.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>
#include <psapi.h>
#include <winevt.h>

#include "bench/samples.h"
#include "diag/debug_trace.h"
#include "eventlog/event_node.h"
#include "eventlog/load_protocol.h"
#include "eventlog/node_flags.h"
#include "eventlog/system_values.h"
#include "eventlog/workers.h"
#include "replay/replay_control.h"
#include "ui/event_rows.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 5;
constexpr std::uint64_t kEvents = 1'000'000;
constexpr wchar_t kChannel[] = L"Bench/Operational";
constexpr DWORD kNewestFirst = EvtQueryChannelPath | EvtQueryReverseDirection;

void DeclareChannel(const std::wstring& pace) {
    replay::Reset();
    ASSERT_TRUE(replay::Script(
        std::wstring(L"channel name=\"") + kChannel +
        L"\" type=Operational owningPublisher=\"Bench\" enabled=true events=" +
        std::to_wstring(kEvents) + L" providers=12 levels=1,2,3,4 rate=100\n" + pace));
}

// What the process has committed for itself. (PrivateUsage is the same number, but Wine
// leaves it 0.)
std::uint64_t PrivateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return counters.PagefileUsage;
}

// The same calls and trace lines as the loader's, keeping nothing.
double BareLoopSeconds() {
    const Stopwatch watch;
    const eventlog::UniqueEvt context = eventlog::CreateSystemValuesContext();
    const eventlog::UniqueEvt query(EvtQuery(nullptr, kChannel, L"*", kNewestFirst));
    EvtSeek(query.get(), 0, nullptr, 0, EvtSeekRelativeToFirst);
    eventlog::SystemValuesBuffer buffer(eventlog::kSystemValuesBytes);
    std::array<EVT_HANDLE, 128> events{};
    DWORD count = 0;
    while (EvtNext(query.get(), 128, events.data(), INFINITE, 0, &count)) {
        diag::DebugTrace(std::wstring(L"Loaded 128 events to channel: Bench/Operational"));
        for (DWORD i = 0; i < count; ++i) {
            EXPECT_EQ(eventlog::RenderSystemValues(context.get(), events[i], buffer).last, 0u);
            EvtClose(events[i]);
        }
        diag::DebugTrace(
            std::wstring(L"\n\nInside thread Loop - i: 1000 - ret: 128 - loaded: 128000"));
    }
    return watch.Microseconds() / 1e6;
}

double LoadSeconds(const std::shared_ptr<eventlog::EventNode>& node) {
    const Stopwatch watch;
    eventlog::ResetForLoad(*node, {});
    eventlog::UnlimitLoad(*node);
    eventlog::StartChannelLoader(nullptr, node).join();
    EXPECT_EQ(node->loadedCount.load(), kEvents);
    return watch.Microseconds() / 1e6;
}

std::shared_ptr<eventlog::EventNode> MakeNode() {
    return std::make_shared<eventlog::EventNode>(
        L"Bench", kChannel,
        eventlog::node_flags::Channel | eventlog::node_flags::OperationalChannel);
}

// Side by side, so that a slow moment of the machine meets both.
void CompareWithBareLoop(const char* title, const std::wstring& pace) {
    DeclareChannel(pace);
    const auto node = MakeNode();
    Samples bare;
    Samples load;
    Samples ratio;
    Samples ownCost;
    for (int run = 0; run < kRuns; ++run) {
        const double bareSeconds = BareLoopSeconds();
        const double loadSeconds = LoadSeconds(node);
        bare.Add(bareSeconds);
        load.Add(loadSeconds);
        ratio.Add(loadSeconds / bareSeconds);
        ownCost.Add((loadSeconds - bareSeconds) * 1e6 / static_cast<double>(kEvents));
    }
    PrintHeadline(title);
    bare.Print("bare loop", "s");
    load.Print("the program's loader", "s");
    ratio.Print("ratio", "");
    ownCost.Print("own cost per record", "us");
}

TEST(Loading, UnpacedService) {
    CompareWithBareLoop("loading 1,000,000 events, limit lifted, service unpaced", L"");
}

TEST(Loading, PacedService) {
    CompareWithBareLoop("loading 1,000,000 events, service at 8 us an event and 50 us a call",
                        L"pace EvtNext call-us=50 event-us=8\n");
}

TEST(Loading, MemoryPerRecord) {
    DeclareChannel(L"");
    Samples bytes;
    for (int run = 0; run < kRuns; ++run) {
        const auto node = MakeNode();
        const std::uint64_t before = PrivateBytes();
        LoadSeconds(node);
        ui::EventRows rows;
        rows.TakeBatch(*node);
        rows.AppendMatching({});
        bytes.Add(static_cast<double>(PrivateBytes() - before) / static_cast<double>(kEvents));
    }
    PrintHeadline("memory, 1,000,000 records loaded and shown");
    bytes.Print("private bytes per record", "bytes");
}

}  // namespace
}  // namespace tavrin::bench
