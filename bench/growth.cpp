// Measures how the costs grow with the number of events, TAVRIN_BENCH_EVENTS. Prints one line of
// the table for growth.gnuplot. Each size needs a new process, which starts without freed memory.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/load_runs.h"
#include "bench/samples.h"
#include "eventlog/loading/load_protocol.h"
#include "support/private_bytes.h"
#include "ui/actions/drain.h"
#include "ui/controls/window_state.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 5;

std::uint64_t EventsOfEnvironment() {
    const char* const text = std::getenv("TAVRIN_BENCH_EVENTS");
    return text == nullptr ? 10'000 : std::strtoull(text, nullptr, 10);
}

// A window without controls: messages to them have no effect.
class Drain {
public:
    explicit Drain(std::shared_ptr<eventlog::EventNode> node) {
        window_.currentNode = std::move(node);
        window_.drainNode = window_.currentNode.get();
        window_.draining = true;
    }

    double Milliseconds() {
        const Stopwatch watch;
        ui::DrainRecords(window_);
        return watch.Milliseconds();
    }

    double FilterMilliseconds(const wchar_t* text) {
        const Stopwatch watch;
        window_.rows.Rebuild(text);
        return watch.Milliseconds();
    }

private:
    ui::MainWindow window_{nullptr};
};

TEST(Growth, OfLoadingDrainingFilteringAndMemory) {
    const std::uint64_t events = EventsOfEnvironment();
    const LoadRuns runs(events, L"");
    const auto node = MakeBenchNode();
    runs.BareLoopSeconds();  // makes the service allocate its memory before the measurement
    const std::uint64_t before = test::PrivateBytes(GetCurrentProcess());
    runs.LoadSeconds(*node);
    Samples drain;
    Drain first(node);
    drain.Add(first.Milliseconds());
    const std::uint64_t after = test::PrivateBytes(GetCurrentProcess());
    Samples filter;
    Samples ownCost;
    for (int run = 0; run < kRuns; ++run) {
        filter.Add(first.FilterMilliseconds(run % 2 == 0 ? L"9:8" : L"no such text"));
        eventlog::RewindRecords(*node);
        drain.Add(Drain(node).Milliseconds());
        const auto other = MakeBenchNode();
        const double bareSeconds = runs.BareLoopSeconds();
        ownCost.Add((runs.LoadSeconds(*other) - bareSeconds) * 1e6 / static_cast<double>(events));
    }
    std::printf("%llu %.3f %.3f %.3f %.1f\n", static_cast<unsigned long long>(events),
                ownCost.Median(), filter.Median(), drain.Median(),
                static_cast<double>(after - before) / static_cast<double>(events));
}

}  // namespace
}  // namespace tavrin::bench
