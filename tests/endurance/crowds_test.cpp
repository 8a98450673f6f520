#include <cstdio>
#include <cwchar>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "window/harness/answer_meter.h"
#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongPatience = 120s;

std::wstring Numbered(const wchar_t* format, std::size_t number) {
    wchar_t text[64];
    std::swprintf(text, std::size(text), format, static_cast<unsigned>(number));
    return text;
}

// Far more sources and channels than a healthy computer has. Prints how long the window takes and
// how long it was frozen.
class Crowds : public WindowTest {
protected:
    AppWindow& StartMetered(const Recording& logs, const std::wstring& script = L"") {
        since_ = GetTickCount64();
        StartOnly(Serving(logs, script));
        meter_ = std::make_unique<AnswerMeter>(app_->window());
        return *app_;
    }

    void Report(const char* what) {
        const double frozen = meter_->TakeLongest().count();
        const ULONGLONG now = GetTickCount64();
        std::printf("%s: %llu ms, longest without an answer: %.0f ms\n", what, now - since_,
                    frozen);
        std::fflush(stdout);
        since_ = now;
    }

    template <typename Condition>
    testing::AssertionResult Appears(const char* what, Condition condition) {
        if (!WaitUntil(condition, kLongPatience)) {
            return testing::AssertionFailure() << what << " does not appear";
        }
        Report(what);
        return testing::AssertionSuccess();
    }

    // Sets the text at once, as a paste does: typing would list the sources again for each letter.
    void Search(const wchar_t* text) const {
        SendMessageW(app_->controls().sourcesSearch, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }

    void TearDown() override {
        meter_.reset();
        WindowTest::TearDown();
    }

private:
    std::unique_ptr<AnswerMeter> meter_;
    ULONGLONG since_ = 0;
};

TEST_F(Crowds, AHundredThousandProvidersCanBeListedSearchedAndTicked) {
    constexpr int kProviders = 100'000;
    constexpr int kFirstPause = 79 * 128;
    const Recording logs(kSomeChannels);
    std::vector<RecordedEvent> events = Events(kProviders);
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].provider = Numbered(L"Provider %05u", i * 7919 % kProviders);
    }
    logs.WriteEvents(L"Application", events);
    AppWindow& app = StartMetered(logs);
    ListReader& sources = app.sources();
    ASSERT_TRUE(Appears("the tree", [&] { return app.tree().ItemCount() > 0; }));

    ASSERT_TRUE(app.SelectPath(kApplication));
    ASSERT_TRUE(
        Appears("the first page's providers", [&] { return sources.RowCount() >= kFirstPause; }));
    app.TypeFilter(L"PROVIDER 12345");
    ASSERT_TRUE(Appears("100,000 providers", [&] { return sources.RowCount() == kProviders; }));
    EXPECT_EQ(sources.Cell(0, 0), L"Provider 00000");
    EXPECT_EQ(sources.Cell(kProviders - 1, 0), L"Provider 99999");
    ASSERT_TRUE(Appears("the one row of a filter", [&] { return app.list().RowCount() == 1; }));

    Search(L"VIDER 123");
    ASSERT_TRUE(Appears("100 providers of a search", [&] { return sources.RowCount() == 100; }));
    EXPECT_EQ(sources.Cell(99, 0), L"Provider 12399");
    sources.SetChecked(45, true);
    ASSERT_TRUE(
        Appears("the load of one provider", [&] { return app.TotalCaption() == L" In log: "; }));
    app.TypeFilter(L"");
    ASSERT_TRUE(Appears("the filter's end", [&] { return app.Loaded() == L"1"; }));
    EXPECT_EQ(app.list().Cell(0, 2), L"Provider 12345");
    app.Command(IDM_REFRESH);
    ASSERT_TRUE(Appears("a refresh", [&] { return app.list().RowCount() == 1; }));
    EXPECT_EQ(sources.RowCount(), 100);
}

// Ten channels for each of 500 publishers, with a common parent folder for each hundred.
TEST_F(Crowds, FiveThousandChannelsAreInOrderAndCanBeShown) {
    constexpr std::size_t kPublishers = 500;
    constexpr std::size_t kOfEach = 10;
    constexpr std::size_t kAreas = kPublishers / 100;
    std::vector<RecordedChannel> channels;
    for (std::size_t i = 0; i < kPublishers * kOfEach; ++i) {
        const std::size_t publisher = i / kOfEach * 77 % kPublishers;
        const std::wstring name = L"Crowd-" + Numbered(L"Area%u-", publisher / 100) +
                                  Numbered(L"Part%02u", publisher % 100);
        channels.push_back(
            {.name = name + Numbered(L"/Log%u", kOfEach - 1 - i % kOfEach), .publisher = name});
    }
    const Recording logs(channels);
    logs.WriteEvents(L"Crowd-Area4-Part99/Log9", Events(7));
    const Gate gate;  // keeps the tree from being built before the meter runs
    AppWindow& app = StartMetered(logs, gate.Block(L"EvtOpenChannelEnum"));
    ASSERT_TRUE(gate.WaitForCall());
    gate.Open();
    constexpr int kItems = 3 + 1 + kAreas + kPublishers + kPublishers * kOfEach;
    ASSERT_TRUE(Appears("the tree", [&] { return app.tree().ItemCount() == kItems; }));

    ASSERT_TRUE(
        app.SelectPath({L"Applications and Service Logs", L"Crowd", L"Area4", L"Part99", L"Log9"}));
    ASSERT_TRUE(Appears("the last channel", [&] { return app.list().RowCount() == 7; }));

    const std::vector<TreeEntry> entries = app.tree().EntriesOf(
        app.tree().Find({L"Applications and Service Logs", L"Crowd", L"Area4"}));
    ASSERT_EQ(entries.size(), 1 + 100 * (1 + kOfEach));
    auto entry = entries.begin() + 1;
    for (std::size_t part = 0; part < 100; ++part) {
        ASSERT_EQ(entry++->text, Numbered(L"Part%02u", part));
        for (std::size_t log = 0; log < kOfEach; ++log, ++entry) {
            ASSERT_EQ(entry->text, Numbered(L"Log%u", log));
            ASSERT_EQ(entry->depth, 2);
        }
    }
}

}  // namespace
}  // namespace tavrin::test
