// What loading costs: the program's loader against a bare loop of the same calls, side by
// side, so that a slow moment of the machine meets both.

#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "bench/load_runs.h"
#include "bench/samples.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 5;
constexpr std::uint64_t kEvents = 1'000'000;

void CompareWithBareLoop(const char* title, const std::wstring& pace) {
    const LoadRuns runs(kEvents, pace);
    Samples bare;
    Samples load;
    Samples ratio;
    Samples ownCost;
    for (int run = 0; run < kRuns; ++run) {
        const std::shared_ptr<eventlog::EventNode> node = MakeBenchNode();
        const double bareSeconds = runs.BareLoopSeconds();
        const double loadSeconds = runs.LoadSeconds(*node);
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

}  // namespace
}  // namespace tavrin::bench
