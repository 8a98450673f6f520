// Measures the process: start, memory, idle processor time and close.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/logs.h"
#include "bench/processor_time.h"
#include "bench/samples.h"
#include "support/private_bytes.h"
#include "support/wait_until.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace test;

constexpr int kRuns = 5;
constexpr int kCloses = 20;
constexpr int kChannels = 1200;
constexpr int kPublishers = 400;
constexpr DWORD kIdleMs = 10'000;
constexpr std::chrono::milliseconds kLongWait{120'000};

std::vector<RecordedChannel> ManyChannels() {
    std::vector<RecordedChannel> channels;
    for (int i = 0; i < kChannels; ++i) {
        const std::wstring publisher = L"Vendor-Component" + std::to_wstring(i % 20) +
                                       L"-Provider" + std::to_wstring(i % kPublishers);
        channels.push_back({.name = publisher + L"/Channel" + std::to_wstring(i / kPublishers),
                            .publisher = publisher});
    }
    return channels;
}

double StartMilliseconds(const Recording& recording) {
    const Stopwatch watch;
    const AppWindow app(On(recording));
    EXPECT_TRUE(app.WaitForTree());
    const double milliseconds = watch.Milliseconds();
    EXPECT_TRUE(ClosesCleanly(app));
    return milliseconds;
}

TEST(ProcessBench, Start) {
    const Recording empty;
    const Recording full(ManyChannels());
    Samples emptyStart;
    Samples fullStart;
    Samples ratio;
    for (int run = 0; run < kRuns; ++run) {
        const double emptyMs = StartMilliseconds(empty);
        const double fullMs = StartMilliseconds(full);
        emptyStart.Add(emptyMs);
        fullStart.Add(fullMs);
        ratio.Add(fullMs / emptyMs);
    }
    PrintHeadline("starting the program");
    emptyStart.Print("start without a channel", "ms");
    fullStart.Print("start with 1,200 channels", "ms");
    ratio.Print("start with 1,200 channels / without a channel", "");
}

TEST(ProcessBench, Memory) {
    const Recording recording({{.name = L"Bench", .attributes = Synthetic(kMillion)}});
    Samples bytes;
    for (int run = 0; run < kRuns; ++run) {
        AppWindow app(On(recording));
        ASSERT_TRUE(app.WaitForTree());
        const HANDLE process = app.process().handle();
        const std::uint64_t before = PrivateBytes(process);
        std::uint64_t peak = before;
        ASSERT_TRUE(Select(app, L"Bench"));
        app.TypeFilter(L"/");
        ASSERT_TRUE(WaitUntil(
            [&] {
                peak = std::max(peak, PrivateBytes(process));
                return app.Loaded() == FormatCount(kMillion);
            },
            kLongWait));
        bytes.Add(static_cast<double>(peak - before) / kMillion);
        EXPECT_TRUE(ClosesCleanly(app));
    }
    PrintHeadline("memory");
    bytes.Print("peak of private bytes a record, loaded and shown", "bytes");
}

double ProcessorPercent(const AppWindow& app) {
    const double before = ProcessorMilliseconds(app.process().handle());
    Sleep(kIdleMs);
    return (ProcessorMilliseconds(app.process().handle()) - before) * 100 / kIdleMs;
}

TEST(ProcessBench, Idle) {
    const Recording recording({{.name = L"Bench", .attributes = Synthetic(kMillion)}});
    AppWindow app(On(recording));
    ASSERT_TRUE(app.WaitForTree());
    Samples nothing;
    Samples paused;
    for (int run = 0; run < kRuns; ++run) {
        nothing.Add(ProcessorPercent(app));
    }
    ASSERT_TRUE(Select(app, L"Bench"));
    ASSERT_TRUE(WaitUntil([&] { return app.list().RowCount() >= 10'000; }));
    for (int run = 0; run < kRuns; ++run) {
        paused.Add(ProcessorPercent(app));
    }
    PrintHeadline("processor time, ten seconds each");
    nothing.Print("processor time while nothing happens", "% of a core");
    paused.Print("processor time while a load waits at its limit", "% of a core");
    EXPECT_TRUE(ClosesCleanly(app));
}

TEST(ProcessBench, Close) {
    const Recording recording({{.name = L"Bench", .attributes = Synthetic(kMillion)}});
    std::mt19937 random(1);
    Samples milliseconds;
    for (int run = 0; run < kCloses; ++run) {
        AppWindow app(On(recording));
        ASSERT_TRUE(app.WaitForTree() && Select(app, L"Bench"));
        app.TypeFilter(L"/");
        Sleep(std::uniform_int_distribution<DWORD>(0, 1500)(random));
        const Stopwatch watch;
        app.PostClose();
        ASSERT_EQ(WaitForSingleObject(app.process().handle(), INFINITE), WAIT_OBJECT_0);
        milliseconds.Add(watch.Milliseconds());
        EXPECT_TRUE(HasEndedCleanly(app));
    }
    PrintHeadline("closing at twenty moments of a load of 1,000,000 events");
    milliseconds.Print("closing during a load, to the end of the process", "ms");
}

}  // namespace
}  // namespace tavrin::bench
