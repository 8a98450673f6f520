// Compares the text of every event of a recording with what tests/oracle computed from it. Calls
// the program's code directly: through the window this would take minutes. TAVRIN_EXPECTED names
// the folder of the expected values, TAVRIN_EXPECTED_LOGS the recording (not set: the embedded
// sample).

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/details/event_details.h"
#include "eventlog/loading/event_loading.h"
#include "eventlog/records/event_record.h"
#include "replay/replay_control.h"
#include "ui/rules/line_breaks.h"
#include "window/harness/environment.h"
#include "window/harness/lines_file.h"

namespace tavrin::test {
namespace {

namespace fs = std::filesystem;

base::ChunkedList<eventlog::EventRecordPtr> LoadChannel(const std::wstring& channel) {
    eventlog::EventNode node(channel, channel,
                             eventlog::node_flags::Channel | eventlog::node_flags::AdminChannel);
    eventlog::UniqueEvt query;
    while (node.done.load() == 0) {
        if (eventlog::LoadChannelEvents(node, query) < 0) {
            ADD_FAILURE() << channel << " fails with " << node.loadResult.load();
            break;
        }
    }
    return std::move(node.recordList);
}

// Returns the fields of an expected line: the record id, the result code, and the text as the
// details pane shows it.
Fields DescribeEvent(const std::wstring& channel, const eventlog::EventRecord& record) {
    std::wstring text;
    const std::uint32_t code = eventlog::FormatEventDescription(
        channel, record.recordId, record.eventId, record.providerName, text);
    return {std::to_wstring(record.recordId), std::to_wstring(code), ui::WithLineBreakPairs(text)};
}

class EveryDescription : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(expected_.empty()) << "TAVRIN_EXPECTED is not set";
        replay::Reset();
        const fs::path logs = PathFromEnvironment(L"TAVRIN_EXPECTED_LOGS");
        if (!logs.empty()) {
            ASSERT_TRUE(replay::LoadDirectory(logs.wstring()));
        }
    }

    void ExpectDescriptions(const std::wstring& channel, const fs::path& file) {
        SCOPED_TRACE(channel);
        const std::vector<Fields> expected = ReadLinesFile(file);
        const auto records = LoadChannel(channel);
        ASSERT_EQ(records.size(), expected.size());
        for (std::size_t row = 0; row < records.size(); ++row) {
            ASSERT_EQ(DescribeEvent(channel, *records[row]), expected[row]) << "row " << row;
        }
        compared_ += records.size();
    }

    const fs::path expected_ = PathFromEnvironment(L"TAVRIN_EXPECTED");
    std::size_t compared_ = 0;
};

TEST_F(EveryDescription, IsWhatTheRecordingSays) {
    for (const Fields& channel : ReadLinesFile(expected_ / L"details" / L"index.tsv")) {
        if (!channel.at(1).empty()) {
            ExpectDescriptions(channel.at(0), expected_ / L"details" / channel.at(1));
        }
    }
    EXPECT_GT(compared_, 0u);
    // The thread keeps one render context.
    EXPECT_EQ(replay::OpenHandles() - replay::OpenHandles(L"RenderContext"), 0u);
    EXPECT_EQ(replay::LedgerFaults(), std::vector<std::wstring>());
}

}  // namespace
}  // namespace tavrin::test
