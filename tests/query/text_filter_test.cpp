#include "query/text_filter.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/records/event_record.h"
#include "query/text_match.h"
#include "support/test_record.h"

namespace tavrin::query {
namespace {

using eventlog::CalendarTime;
using eventlog::EventRecord;
using eventlog::EventRecordList;
using Indexes = std::vector<std::uint32_t>;

class TextFilterTest : public testing::Test {
protected:
    void Add(const wchar_t* provider, std::uint8_t level, std::uint32_t process,
             const CalendarTime& time) {
        const EventRecordList page{test::MakeRecord(
            {.process = process, .level = level, .time = time, .provider = provider})};
        test::Append(loaded_.records, page);
        const eventlog::PageIndex added = keys_.Index(page);
        test::Append(loaded_.index.keys, added.keys);
        test::Append(loaded_.index.kinds, added.newKinds);
    }

    // Adds records with ordinary and unusual field values.
    void AddRandomRecords(int count) {
        constexpr const wchar_t* kProviders[] = {L"Alpha-Beta", L"alpha", L"2024", L"A 17:09", L""};
        for (int i = 0; i < count; ++i) {
            CalendarTime time{Below(3) == 0 ? 30828 * Below(2) : 2020 + Below(9)};
            time.month = 1 + Below(12);
            time.day = 1 + Below(28);
            time.hour = Below(24);
            time.minute = Below(60);
            time.second = Below(60);
            Add(kProviders[Below(5)], static_cast<std::uint8_t>(Below(10)),
                Below(40) * (Below(9) == 0 ? 33333333 : 1000), time);
        }
    }

    // Returns part of a random record's text, sometimes with one character changed.
    std::wstring RandomText() {
        const EventRecord& record =
            *loaded_.records[Below(static_cast<unsigned>(loaded_.records.size()))];
        const std::wstring fields[] = {record.timeText, record.processId, record.providerName,
                                       LevelName(record), record.timeText + record.processId};
        const std::wstring& field = fields[Below(5)];
        const auto begin = Below(static_cast<unsigned>(field.size()) + 1);
        std::wstring text = field.substr(begin, Below(8) == 0 ? field.size() : Below(6));
        if (!text.empty() && Below(4) == 0) {
            text[Below(static_cast<unsigned>(text.size()))] = L"0:/ aE"[Below(6)];
        }
        return text;
    }

    unsigned Below(unsigned limit) {
        return std::uniform_int_distribution<unsigned>(0, limit - 1)(random_);
    }

    // The records from `first` on that match according to MatchesTextFilter.
    Indexes Expected(const std::wstring& text, std::uint32_t first = 0) const {
        Indexes matching;
        for (std::uint32_t i = first; i < loaded_.records.size(); ++i) {
            if (MatchesTextFilter(*loaded_.records[i], text)) {
                matching.push_back(i);
            }
        }
        return matching;
    }

    Indexes Found(TextFilter& filter) const {
        std::size_t cursor = 0;
        return Found(filter, cursor);
    }

    Indexes Found(TextFilter& filter, std::size_t& cursor) const {
        Indexes matches;
        filter.AppendMatches(loaded_, cursor, matches);
        return matches;
    }

    eventlog::LoadedRecords loaded_;

private:
    eventlog::SearchKeyMaker keys_;
    std::mt19937 random_{1};
};

TEST_F(TextFilterTest, FindsTheSameRecordsAsMatchesTextFilter) {
    AddRandomRecords(300);
    int found = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::wstring text = RandomText();
        TextFilter filter(text);
        const Indexes matches = Found(filter);
        EXPECT_EQ(matches, Expected(text)) << testing::PrintToString(text);
        found += matches.empty() ? 0 : 1;
    }
    EXPECT_GT(found, 1000);
    EXPECT_LT(found, 3000);
}

TEST_F(TextFilterTest, SearchesTimesAndProcessIdsOfUnusualLength) {
    Add(L"P", 1, 1, {});
    Add(L"P", 1, 4294967295, {30828, 9, 14, 2, 48, 5});

    TextFilter zeros(L"00/00/00 00");
    EXPECT_EQ(Found(zeros), Indexes{0});
    TextFilter year(L"30828");
    EXPECT_EQ(Found(year), Indexes{1});
    TextFilter process(L"94967");
    EXPECT_EQ(Found(process), Indexes{1});
}

TEST_F(TextFilterTest, ContinuesWithLaterRecords) {
    AddRandomRecords(50);
    TextFilter filter(L"a");
    std::size_t cursor = 0;
    EXPECT_EQ(Found(filter, cursor), Expected(L"a"));

    AddRandomRecords(50);
    EXPECT_EQ(Found(filter, cursor), Expected(L"a", 50));
}

TEST_F(TextFilterTest, CrossesTheChunksOfTheIndex) {
    AddRandomRecords(3000);
    TextFilter filter(L"7");

    EXPECT_EQ(Found(filter), Expected(L"7"));
}

TEST_F(TextFilterTest, AppendsToWhatIsThere) {
    Add(L"P", 1, 1, {});
    TextFilter filter(L"p");
    std::size_t cursor = 0;
    Indexes matches{7};
    filter.AppendMatches(loaded_, cursor, matches);

    EXPECT_EQ(matches, (Indexes{7, 0}));
}

TEST_F(TextFilterTest, MatchesEveryRecordWithoutAText) {
    AddRandomRecords(10);
    TextFilter filter;

    EXPECT_EQ(Found(filter).size(), 10u);
    EXPECT_EQ(filter.Text(), L"");
}

}  // namespace
}  // namespace tavrin::query
