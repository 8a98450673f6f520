// Measures text filtering: the matching in this process, and in the window the wait from the last
// key to the rows, less the program's delay for further keys.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <windows.h>

#include "base/utf8.h"
#include "bench/logs.h"
#include "bench/samples.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/records/event_record.h"
#include "query/event_rows.h"
#include "support/recording.h"
#include "support/wait_until.h"
#include "ui/controls/event_list.h"
#include "window/controls/input.h"
#include "window/harness/app_window.h"
#include "window/harness/window_test.h"

namespace tavrin::bench {
namespace {

using namespace test;

constexpr int kRuns = 5;
constexpr int kEvents = kMillion;
constexpr int kSources = 12;
constexpr double kTypingPauseMs = 200;
constexpr std::chrono::milliseconds kLongWait{120'000};

eventlog::EventRecordPtr MakeRecord(unsigned i) {
    const std::wstring source = L"Provider-" + std::to_wstring(i % kSources);
    const eventlog::CalendarTime time{2025, 1, 1 + i / 86400, i / 3600 % 24, i / 60 % 60, i % 60};
    return std::make_shared<const eventlog::EventRecord>(i + 1, 1000, 4 * (i % 2000),
                                                         static_cast<std::uint8_t>(1 + i % 4), time,
                                                         source.c_str(), source, 0);
}

// One record per second, from twelve sources and with four levels, appended in pages as by a
// loader.
std::shared_ptr<eventlog::EventNode> MakeLoadedNode() {
    constexpr unsigned kPageSize = 128;
    auto node = std::make_shared<eventlog::EventNode>(
        L"Bench", L"Bench",
        eventlog::node_flags::Channel | eventlog::node_flags::OperationalChannel);
    for (unsigned i = 0; i < kEvents;) {
        eventlog::EventRecordList page;
        for (; i < kEvents && page.size() < kPageSize; ++i) {
            page.push_back(MakeRecord(i));
        }
        eventlog::AppendPage(*node, std::move(page));
    }
    eventlog::MarkDone(*node);
    return node;
}

const struct {
    const char* what;
    std::wstring text;
} kTexts[] = {{"no hit", L"no such text"},
              {"all hit", L"provider"},
              {"letters", L"warning"},
              {"digits", L"2025"},
              {"digits that no row has", L"98765"},
              {"one digit", L"7"},
              {"255 characters", std::wstring(255, L'p')},
              {"one row's time", L"03/01/2025 04:05:06"}};

// Writes the rows and the searched texts for bench/rg_times.py.
void WriteForOthers(const query::EventRows& rows, const std::filesystem::path& folder) {
    std::ofstream file(folder / "rows.txt", std::ios::binary);
    for (int row = 0; row < kEvents; ++row) {
        for (const ui::Column& column : ui::kColumns) {
            file << base::ToUtf8(column.cell(*rows.Row(row))) << '\t';
        }
        file << '\n';
    }
    std::ofstream texts(folder / "texts.txt", std::ios::binary);
    for (const auto& [what, text] : kTexts) {
        texts << what << '\t' << base::ToUtf8(text) << '\n';
    }
}

TEST(FilteringBench, AMillionRowsInTheProcess) {
    const auto node = MakeLoadedNode();
    query::EventRows rows;
    rows.TakeBatch(*node);
    PrintHeadline("filtering 1,000,000 loaded rows, in the process");
    for (const auto& [what, text] : kTexts) {
        Samples milliseconds;
        for (int run = 0; run < kRuns; ++run) {
            const Stopwatch watch;
            rows.Rebuild(text);
            milliseconds.Add(watch.Milliseconds());
        }
        milliseconds.Print(what, "ms");
    }
    rows.Rebuild(L"");
    if (const char* const folder = std::getenv("TAVRIN_BENCH_ROWS")) {
        WriteForOthers(rows, folder);
    }
}

class FilteringWindow : public testing::Test {
protected:
    void SetUp() override {
        app_ = std::make_unique<AppWindow>(On(recording_));
        ASSERT_TRUE(app_->WaitForTree());
        ASSERT_TRUE(Select(*app_, L"Bench"));
        app_->TypeFilter(L"/");
        ASSERT_TRUE(WaitUntil([&] { return app_->Loaded() == FormatCount(kEvents); }, kLongWait));
    }

    void TearDown() override { EXPECT_TRUE(ClosesCleanly(*app_)); }

    // Measures from the last key to the matching rows.
    void Measure(const char* what, const std::wstring& text, int expectedRows) {
        Samples milliseconds;
        for (int run = 0; run < kRuns; ++run) {
            app_->TypeFilter(L"/!");  // matches no row and is no prefix of a measured text
            ASSERT_TRUE(app_->WaitForRows(0));
            app_->TypeFilter(text.substr(0, text.size() - 1));
            const Stopwatch watch;
            TypeText(text.substr(text.size() - 1));
            ASSERT_TRUE(app_->WaitForRows(expectedRows));
            milliseconds.Add(watch.Milliseconds() - kTypingPauseMs);
        }
        milliseconds.Print(what, "ms");
    }

    // The synthetic channel has one event per second, so this time is unique.
    std::wstring NewestTime() { return app_->list().Cell(0, 1); }

    const Recording recording_{
        {{.name = L"Bench",
          .attributes = L"events='" + std::to_wstring(kEvents) + L"' providers='" +
                        std::to_wstring(kSources) + L"' levels='1,2,3,4' rate='1'"}}};
    std::unique_ptr<AppWindow> app_;
};

TEST_F(FilteringWindow, FromTheLastKeyToTheRows) {
    const std::wstring newest = NewestTime();
    PrintHeadline("last key to rows, beyond the 200 ms");
    Measure("a text in every row", L"synthetic", kEvents);
    Measure("a text in one row", newest, 1);
    // Starts from one row, because the list would already be empty.
    Samples milliseconds;
    for (int run = 0; run < kRuns; ++run) {
        app_->TypeFilter(newest);
        ASSERT_TRUE(app_->WaitForRows(1));
        const Stopwatch watch;
        TypeText(L"!");
        ASSERT_TRUE(app_->WaitForRows(0));
        milliseconds.Add(watch.Milliseconds() - kTypingPauseMs);
    }
    milliseconds.Print("a text in no row", "ms");
}

}  // namespace
}  // namespace tavrin::bench
