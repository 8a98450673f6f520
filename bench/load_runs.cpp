#include "bench/load_runs.h"

#include <array>

#include <gtest/gtest.h>
#include <windows.h>
#include <winevt.h>

#include "bench/samples.h"
#include "diag/debug_trace.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/loading/event_loading.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"
#include "eventlog/service/system_values.h"
#include "replay/replay_control.h"

namespace tavrin::bench {
namespace {

constexpr wchar_t kChannel[] = L"Bench/Operational";
constexpr DWORD kNewestFirst = EvtQueryChannelPath | EvtQueryReverseDirection;

// A non-owning pointer: the caller owns the node and joins the loader.
std::shared_ptr<eventlog::EventNode> Borrow(eventlog::EventNode& node) {
    return {&node, [](eventlog::EventNode*) {}};
}

}  // namespace

LoadRuns::LoadRuns(std::uint64_t events, const std::wstring& pace) : events_(events) {
    replay::Reset();
    EXPECT_TRUE(replay::Script(
        std::wstring(L"channel name=\"") + kChannel +
        L"\" type=Operational owningPublisher=\"Bench\" enabled=true events=" +
        std::to_wstring(events) + L" providers=12 levels=1,2,3,4 rate=100\n" + pace));
}

double LoadRuns::BareLoopSeconds() const {
    const Stopwatch watch;
    const eventlog::UniqueEvt context = eventlog::CreateSystemValuesContext();
    const eventlog::UniqueEvt query(EvtQuery(nullptr, kChannel, L"*", kNewestFirst));
    EvtSeek(query.get(), 0, nullptr, 0, EvtSeekRelativeToFirst);
    eventlog::SystemValuesBuffer buffer(eventlog::kSystemValuesBytes);
    std::array<EVT_HANDLE, 128> events{};
    std::uint64_t rendered = 0;
    DWORD count = 0;
    while (EvtNext(query.get(), 128, events.data(), INFINITE, 0, &count)) {
        diag::DebugTrace(std::wstring(L"Loaded 128 events to channel: Bench/Operational"));
        for (DWORD i = 0; i < count; ++i) {
            rendered += eventlog::RenderSystemValues(context.get(), events[i], buffer).rendered;
            EvtClose(events[i]);
        }
        diag::DebugTrace(
            std::wstring(L"\n\nInside thread Loop - i: 1000 - ret: 128 - loaded: 128000"));
    }
    EXPECT_EQ(rendered, events_);
    return watch.Seconds();
}

double LoadRuns::LoadSeconds(eventlog::EventNode& node) const {
    eventlog::ResetForLoad(node, {});
    eventlog::UnlimitLoad(node);
    const Stopwatch watch;
    eventlog::StartChannelLoader(nullptr, Borrow(node)).join();
    const double seconds = watch.Seconds();
    EXPECT_EQ(node.loadedCount.load(), events_);
    return seconds;
}

std::shared_ptr<eventlog::EventNode> MakeBenchNode() {
    return std::make_shared<eventlog::EventNode>(
        L"Bench", kChannel,
        eventlog::node_flags::Channel | eventlog::node_flags::OperationalChannel);
}

}  // namespace tavrin::bench
