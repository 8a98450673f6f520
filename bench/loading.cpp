// Measures loading: the program's loader against a bare loop of the same calls. The two alternate,
// so a slow moment of the machine affects both.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/load_runs.h"
#include "bench/processor_time.h"
#include "bench/samples.h"
#include "eventlog/records/event_record.h"

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
    Samples ownProcessorTime;
    for (int run = 0; run < kRuns; ++run) {
        const std::shared_ptr<eventlog::EventNode> node = MakeBenchNode();
        const double atFirst = ProcessorMilliseconds(GetCurrentProcess());
        const double bareSeconds = runs.BareLoopSeconds();
        const double between = ProcessorMilliseconds(GetCurrentProcess());
        const double loadSeconds = runs.LoadSeconds(*node);
        const double atLast = ProcessorMilliseconds(GetCurrentProcess());
        bare.Add(bareSeconds);
        load.Add(loadSeconds);
        ratio.Add(loadSeconds / bareSeconds);
        ownCost.Add((loadSeconds - bareSeconds) * 1e6 / static_cast<double>(kEvents));
        ownProcessorTime.Add((atLast - between - (between - atFirst)) * 1e3 /
                             static_cast<double>(kEvents));
    }
    PrintHeadline(title);
    bare.Print("bare loop", "s");
    load.Print("the program's loader", "s");
    ratio.Print("loading / bare loop", "");
    ownCost.Print("own cost of a record above the bare loop", "us");
    ownProcessorTime.Print("the same of processor time", "us");
}

// Lower bound for keeping a million records: the two allocations of each, one for the record with
// its reference count and one for its time text.
TEST(Loading, MemoryAlone) {
    constexpr std::size_t kRecordBytes = sizeof(eventlog::EventRecord) + 16;
    constexpr std::size_t kTimeTextBytes = 20 * sizeof(wchar_t);
    Samples microseconds;
    for (int run = 0; run < kRuns; ++run) {
        std::vector<std::unique_ptr<char[]>> blocks;
        blocks.reserve(2 * kEvents);
        const Stopwatch watch;
        for (std::uint64_t i = 0; i < kEvents; ++i) {
            blocks.push_back(std::make_unique<char[]>(kRecordBytes));
            blocks.push_back(std::make_unique<char[]>(kTimeTextBytes));
        }
        microseconds.Add(watch.Microseconds() / static_cast<double>(kEvents));
    }
    PrintHeadline("the memory of 1,000,000 records");
    microseconds.Print("the memory of a record: two blocks, made and cleared", "us");
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
