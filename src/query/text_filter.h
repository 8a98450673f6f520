#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/chunked_list.h"
#include "eventlog/records/search_index.h"
#include "query/digit_search.h"

namespace tavrin::query {

// A filter text prepared for testing the records of one load. The outcome is that of
// MatchesTextFilter for each of them.
class TextFilter {
public:
    explicit TextFilter(std::wstring text = {});

    const std::wstring& Text() const { return text_; }

    // Appends the indexes of the matching records from `cursor` on, and moves the cursor to the
    // end. The records may only grow between calls. After std::bad_alloc another call continues.
    void AppendMatches(const eventlog::LoadedRecords& loaded, std::size_t& cursor,
                       std::vector<std::uint32_t>& matches);

private:
    void JudgeNewKinds(const base::ChunkedList<eventlog::EventRecordPtr>& kinds);
    bool Matches(const eventlog::EventRecordPtr& record, const eventlog::SearchKey& key) const;

    std::wstring text_;
    DigitSearch inTime_;
    DigitSearch inProcess_;
    std::vector<std::uint8_t> matchesKind_;  // by kind
};

}  // namespace tavrin::query
