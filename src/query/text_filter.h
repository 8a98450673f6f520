#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "eventlog/event_node.h"
#include "eventlog/search_index.h"
#include "query/digit_search.h"

namespace tavrin::query {

// A filter text made ready for testing many records. The outcome is that of
// MatchesTextFilter for each of them.
class TextFilter {
public:
    explicit TextFilter(std::wstring text = {});

    const std::wstring& Text() const { return text_; }

    // Appends the indexes, from first on, of the records that match. The keys are those of
    // these records, and since the filter was made were only added to.
    void AppendMatches(std::span<const eventlog::EventRecordPtr> records,
                       const eventlog::SearchKeys& keys, std::size_t first,
                       std::vector<std::uint32_t>& matches);

private:
    void JudgeNewKinds(std::span<const eventlog::EventRecordPtr> kinds);
    bool Matches(const eventlog::EventRecordPtr& record, const eventlog::SearchKey& key) const;

    std::wstring text_;
    DigitSearch inTime_;
    DigitSearch inProcess_;
    std::vector<std::uint8_t> matchesKind_;  // by kind
};

}  // namespace tavrin::query
