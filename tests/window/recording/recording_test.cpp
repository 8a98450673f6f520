// Compares the real window on a whole recording with what tests/oracle computed from it.
// TAVRIN_EXPECTED names the folder of the expected values, TAVRIN_EXPECTED_LOGS the recording (not
// set: the embedded sample).

#include <algorithm>
#include <map>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/environment.h"
#include "window/harness/lines_file.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

int Number(const std::wstring& text) {
    return std::stoi(text);
}

// An item's place in the tree: the texts and icons from the root down.
using ItemKey = std::vector<std::pair<std::wstring, int>>;

// The path from the root to the last item visited.
class ItemPath {
public:
    const ItemKey& Visit(int depth, const std::wstring& text, int icon) {
        key_.resize(static_cast<std::size_t>(depth));
        key_.emplace_back(text, icon);
        return key_;
    }

private:
    ItemKey key_;
};

struct ExpectedChannel {
    std::wstring path;
    std::wstring file;  // empty: no events
    int count;
    int loadResult;
    ItemKey key;
};

class WholeRecording : public WindowTest {
protected:
    void SetUp() override {
        expected_ = PathFromEnvironment(L"TAVRIN_EXPECTED");
        if (expected_.empty()) {
            GTEST_SKIP() << "no expected values: TAVRIN_EXPECTED is not set";
        }
        AppOptions options;
        options.logs = PathFromEnvironment(L"TAVRIN_EXPECTED_LOGS");
        Start(options);
        ReadExpectedTree();
        ReadExpectedChannels();
    }

    void ReadExpectedTree() {
        ItemPath itemPath;
        for (const Fields& item : ReadLinesFile(expected_ / L"tree.tsv")) {
            const ItemKey& key = itemPath.Visit(Number(item.at(0)), item.at(1), Number(item.at(2)));
            expectedItems_.push_back(key);
            keys_[item.at(3)] = key;
        }
    }

    void ReadExpectedChannels() {
        for (const Fields& channel : ReadLinesFile(expected_ / L"rows" / L"index.tsv")) {
            const std::wstring& path = channel.at(0);
            channels_.push_back({path, channel.at(1), Number(channel.at(2)), Number(channel.at(3)),
                                 keys_.at(path)});
        }
    }

    std::vector<ItemKey> ShownItems() {
        std::vector<ItemKey> items;
        ItemPath itemPath;
        for (const TreeEntry& entry : app_->tree().Entries()) {
            items.push_back(itemPath.Visit(entry.depth, entry.text, entry.image));
            items_.emplace(items.back(), entry.item);
        }
        return items;
    }

    void Select(const ExpectedChannel& channel) {
        const auto found = items_.find(channel.key);
        ASSERT_NE(found, items_.end()) << channel.path;
        app_->tree().Select(found->second);
    }

    // Two channels of one publisher may have the same text. Then only their rows tell them apart.
    bool SelectAndLoad(const ExpectedChannel& channel, const std::vector<Fields>& rows) {
        const auto [first, last] = items_.equal_range(channel.key);
        for (auto item = first; item != last; ++item) {
            app_->tree().Select(item->second);
            if (WaitForLoad(rows, std::next(item) == last ? kPatience : 1000ms)) {
                return true;
            }
        }
        return false;
    }

    bool IsAmbiguous(const ExpectedChannel& channel) const { return items_.count(channel.key) > 1; }

    static RowCells CellsOf(const Fields& row) {
        RowCells cells;
        std::copy_n(row.begin(), cells.size(), cells.begin());
        return cells;
    }

    // Waits until the list shows this load. An earlier one may have the same size, so compares the
    // first and the last row.
    bool WaitForLoad(const std::vector<Fields>& rows, std::chrono::milliseconds patience) {
        const int last = static_cast<int>(rows.size()) - 1;
        const auto isShown = [&] {
            return app_->list().RowCount() == last + 1 &&
                   app_->list().Row(0) == CellsOf(rows.front()) &&
                   app_->list().Row(last) == CellsOf(rows.back());
        };
        return WaitUntil(isShown, patience);
    }

    void ExpectRows(const std::vector<Fields>& rows) {
        for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
            const Fields& expected = rows[static_cast<std::size_t>(row)];
            ASSERT_EQ(app_->list().Row(row), CellsOf(expected)) << "row " << row;
            // A row for which the program sets no icon has the first one.
            ASSERT_EQ(app_->list().Image(row), std::max(Number(expected.at(6)), 0))
                << "row " << row;
        }
    }

    std::vector<Fields> Rows(const ExpectedChannel& channel) const {
        return ReadLinesFile(expected_ / L"rows" / channel.file);
    }

    // The expected lines of a channel's events, in the order of its rows.
    std::vector<Fields> Texts(const ExpectedChannel& channel) const {
        for (const Fields& entry : ReadLinesFile(expected_ / L"details" / L"index.tsv")) {
            if (entry.at(0) == channel.path) {
                return ReadLinesFile(expected_ / L"details" / entry.at(1));
            }
        }
        return {};
    }

    void ExpectDetails(const Fields& event) {
        EXPECT_TRUE(WaitUntil([&] { return app_->Details() == event.at(2); }, 3000ms))
            << "record " << event.at(0) << "\nshown: " << app_->Details()
            << "\nexpected: " << event.at(2);
    }

    void ClickRow(int row) {
        app_->list().EnsureVisible(row);
        const RECT cell = app_->list().RowRect(row, LVIR_BOUNDS);
        // Alternates between two places: two clicks at one place would be a double click.
        clickOffset_ = clickOffset_ == 30 ? 90 : 30;
        ClickLeft({cell.left + clickOffset_, (cell.top + cell.bottom) / 2});
    }

    fs::path expected_;
    std::vector<ItemKey> expectedItems_;
    std::map<std::wstring, ItemKey> keys_;  // by node id
    std::multimap<ItemKey, HTREEITEM> items_;
    std::vector<ExpectedChannel> channels_;
    LONG clickOffset_ = 30;
};

TEST_F(WholeRecording, EveryItemOfTheTreeIsShownInOrder) {
    std::vector<ItemKey> shown = ShownItems();
    ASSERT_EQ(shown.size(), expectedItems_.size());
    std::map<ItemKey, std::wstring> lastChild;
    for (const ItemKey& key : shown) {
        const ItemKey parent(key.begin(), key.end() - 1);
        const auto [former, first] = lastChild.try_emplace(parent, key.back().first);
        EXPECT_TRUE(first || former->second <= key.back().first) << key.back().first;
        former->second = key.back().first;
    }
    // The order of siblings with the same name is not defined, so compares without the order.
    std::ranges::sort(shown);
    std::ranges::sort(expectedItems_);
    EXPECT_TRUE(shown == expectedItems_);
}

TEST_F(WholeRecording, EveryCellOfEveryRowOfEveryChannelIsRight) {
    ShownItems();
    int rows = 0;
    for (const ExpectedChannel& channel : channels_) {
        if (channel.count == 0 || channel.loadResult != 0) {
            continue;
        }
        SCOPED_TRACE(channel.path);
        const std::vector<Fields> expected = Rows(channel);
        ASSERT_EQ(static_cast<int>(expected.size()), channel.count);
        ASSERT_TRUE(SelectAndLoad(channel, expected));
        ExpectRows(expected);
        EXPECT_TRUE(WaitUntil([&] {
            const std::wstring count = FormatCount(static_cast<std::uint64_t>(channel.count));
            return app_->Loaded() == count && app_->Total() == count;
        })) << app_->Loaded();
        rows += channel.count;
    }
    RecordProperty("rows", rows);
    EXPECT_GT(rows, 0);
}

TEST_F(WholeRecording, EmptyChannelsAreEmpty) {
    constexpr std::size_t kVisits = 25;
    ShownItems();
    std::erase_if(channels_, [&](const ExpectedChannel& channel) {
        return channel.count != 0 || channel.loadResult != 0 || IsAmbiguous(channel);
    });
    const std::size_t step = std::max<std::size_t>(channels_.size() / kVisits, 1);
    for (std::size_t i = 0; i < channels_.size(); i += step) {
        Select(channels_[i]);
        SCOPED_TRACE(channels_[i].path);
        EXPECT_TRUE(WaitUntil([&] {
            return app_->list().RowCount() == 0 && app_->Loaded() == L"0" && app_->Total() == L"0";
        }));
        EXPECT_EQ(app_->Status(), L"");
    }
}

TEST_F(WholeRecording, ChannelsThatCannotBeReadSaySo) {
    constexpr std::size_t kVisits = 10;
    ShownItems();
    std::erase_if(channels_, [&](const ExpectedChannel& channel) {
        return channel.loadResult == 0 || IsAmbiguous(channel);
    });
    const std::size_t step = std::max<std::size_t>(channels_.size() / kVisits, 1);
    for (std::size_t i = 0; i < channels_.size(); i += step) {
        Select(channels_[i]);
        const std::wstring start = L"Failed to load " + channels_[i].path + L": ";
        const std::wstring end = L"\r\nError code: " + std::to_wstring(channels_[i].loadResult);
        EXPECT_TRUE(WaitUntil([&] {
            return app_->Status().starts_with(start) && app_->Details().ends_with(end);
        })) << channels_[i].path
            << ": " << app_->Details();
    }
}

TEST_F(WholeRecording, TheDetailsOfEventsAcrossTheLogAreRight) {
    constexpr std::size_t kEvents = 200;
    ShownItems();
    std::erase_if(channels_, [](const ExpectedChannel& channel) {
        return channel.count == 0 || channel.loadResult != 0;
    });
    ASSERT_FALSE(channels_.empty());
    ASSERT_TRUE(BringToFront(app_->window()));
    const std::size_t each = kEvents / channels_.size() + 1;
    for (const ExpectedChannel& channel : channels_) {
        SCOPED_TRACE(channel.path);
        ASSERT_TRUE(SelectAndLoad(channel, Rows(channel)));
        const std::vector<Fields> texts = Texts(channel);
        ASSERT_EQ(static_cast<int>(texts.size()), channel.count);

        // By mouse, at intervals through the log.
        const std::size_t step = std::max<std::size_t>(texts.size() / each, 1);
        for (std::size_t row = 0; row < texts.size(); row += step) {
            ClickRow(static_cast<int>(row));
            ExpectDetails(texts[row]);
        }
        // By keyboard, from the first row on.
        ClickRow(0);
        ExpectDetails(texts[0]);
        for (std::size_t row = 1; row < std::min(texts.size(), each); ++row) {
            PressKey(VK_DOWN);
            ExpectDetails(texts[row]);
        }
    }
}

}  // namespace
}  // namespace tavrin::test
