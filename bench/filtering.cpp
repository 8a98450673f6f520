// What filtering by a text costs: the rows in the process, and what a user waits for in the
// window beyond the time that the program waits for the next key.

#include <chrono>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "bench/samples.h"
#include "eventlog/event_node.h"
#include "eventlog/event_record.h"
#include "eventlog/node_flags.h"
#include "ui/event_rows.h"
#include "window/harness/app_window.h"
#include "window/harness/input.h"
#include "window/harness/recording_writer.h"
#include "window/harness/waiting.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace window_tests;

constexpr int kRuns = 5;
constexpr int kEvents = 1'000'000;
constexpr int kSources = 12;
constexpr double kTypingPauseMs = 200;
constexpr std::chrono::milliseconds kLongWait{120'000};

// A record a second, of twelve sources and four levels.
std::shared_ptr<eventlog::EventNode> MakeLoadedNode() {
    auto node = std::make_shared<eventlog::EventNode>(
        L"Bench", L"Bench",
        eventlog::node_flags::Channel | eventlog::node_flags::OperationalChannel);
    for (unsigned i = 0; i < kEvents; ++i) {
        const std::wstring source = L"Provider-" + std::to_wstring(i % kSources);
        const eventlog::CalendarTime time{2025,          1,           1 + i / 86400,
                                          i / 3600 % 24, i / 60 % 60, i % 60};
        node->recordList.push_back(std::make_shared<const eventlog::EventRecord>(
            i + 1, 1000, 4 * (i % 2000), static_cast<std::uint8_t>(1 + i % 4), time, source.c_str(),
            source, 0));
    }
    node->done.store(1);
    return node;
}

TEST(FilteringBench, AMillionRowsInTheProcess) {
    const auto node = MakeLoadedNode();
    ui::EventRows rows;
    rows.TakeBatch(*node);
    const struct {
        const char* what;
        const wchar_t* text;
    } kTexts[] = {{"a text in no row", L"no such text"},
                  {"a text in every row", L"provider"},
                  {"a text in one row", L"03/01/2025 04:05:06"},
                  {"no text", L""}};
    PrintHeadline("filtering 1,000,000 loaded rows, in the process");
    for (const auto& [what, text] : kTexts) {
        Samples milliseconds;
        for (int run = 0; run < kRuns; ++run) {
            const Stopwatch watch;
            rows.Rebuild(text);
            milliseconds.Add(watch.Microseconds() / 1000);
        }
        milliseconds.Print(what, "ms");
    }
}

class FilteringWindow : public testing::Test {
protected:
    void SetUp() override {
        AppOptions options;
        options.logs = recording_.folder();
        app_ = std::make_unique<AppWindow>(options);
        ASSERT_TRUE(app_->WaitForTree());
        ASSERT_TRUE(app_->SelectPath({L"Applications and Service Logs", L"Bench"}));
        app_->TypeFilter(L"/");
        ASSERT_TRUE(WaitUntil([&] { return app_->Loaded() == FormatCount(kEvents); }, kLongWait));
    }

    void TearDown() override { EXPECT_TRUE(ClosesCleanly(*app_)); }

    // From the last key to the rows of the text.
    void Measure(const char* what, const std::wstring& text, int expectedRows) {
        Samples milliseconds;
        for (int run = 0; run < kRuns; ++run) {
            app_->TypeFilter(L"/!");  // in no row, and the start of none of the texts
            ASSERT_TRUE(app_->WaitForRows(0));
            app_->TypeFilter(text.substr(0, text.size() - 1));
            const Stopwatch watch;
            TypeText(text.substr(text.size() - 1));
            ASSERT_TRUE(app_->WaitForRows(expectedRows));
            milliseconds.Add(watch.Microseconds() / 1000 - kTypingPauseMs);
        }
        milliseconds.Print(what, "ms");
    }

    // At an event a second each has a time of its own.
    std::wstring NewestTime() { return app_->list().Cell(0, 1); }

    const RecordingWriter recording_{
        {{.name = L"Bench",
          .attributes = L"events='" + std::to_wstring(kEvents) + L"' providers='" +
                        std::to_wstring(kSources) + L"' levels='1,2,3,4' rate='1'"}}};
    std::unique_ptr<AppWindow> app_;
};

TEST_F(FilteringWindow, FromTheLastKeyToTheRows) {
    const std::wstring newest = NewestTime();
    PrintHeadline("the window, 1,000,000 rows: last key to rows, beyond the 200 ms");
    Measure("a text in every row", L"synthetic", kEvents);
    Measure("a text in one row", newest, 1);
    // The empty list is there before: it is left by a text in one row.
    Samples milliseconds;
    for (int run = 0; run < kRuns; ++run) {
        app_->TypeFilter(newest);
        ASSERT_TRUE(app_->WaitForRows(1));
        const Stopwatch watch;
        TypeText(L"!");
        ASSERT_TRUE(app_->WaitForRows(0));
        milliseconds.Add(watch.Microseconds() / 1000 - kTypingPauseMs);
    }
    milliseconds.Print("a text in no row", "ms");
}

}  // namespace
}  // namespace tavrin::bench
