#include "query/text_filter.h"

#include <utility>

#include "eventlog/event_record.h"
#include "query/text_match.h"

namespace tavrin::query {

using eventlog::EventRecord;

TextFilter::TextFilter(std::wstring text) : text_(std::move(text)), inTime_(text_) {}

void TextFilter::AppendMatches(std::span<const eventlog::EventRecordPtr> records,
                               const SearchIndex& index, std::size_t first,
                               std::vector<std::uint32_t>& matches) {
    JudgeNewKinds(index);
    for (std::size_t i = first; i < records.size(); ++i) {
        const TimeDigits time = index.TimeOf(i);
        if (matchesKind_[index.KindOf(i)] != 0 ||
            (time == kNoTimeDigits ? ContainsFolded(records[i]->timeText, text_)
                                   : inTime_.OccursIn(time))) {
            matches.push_back(static_cast<std::uint32_t>(i));
        }
    }
}

void TextFilter::JudgeNewKinds(const SearchIndex& index) {
    for (const EventRecord* record : index.KindsFrom(matchesKind_.size())) {
        matchesKind_.push_back(MatchesButForTime(*record, text_) ? 1 : 0);
    }
}

}  // namespace tavrin::query
