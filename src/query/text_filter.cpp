#include "query/text_filter.h"

#include <utility>

#include "eventlog/event_record.h"
#include "query/text_match.h"

namespace tavrin::query {

using eventlog::EventRecord;

TextFilter::TextFilter(std::wstring text)
    : text_(std::move(text)),
      inTime_(DigitSearch::InTimes(text_)),
      inProcess_(DigitSearch::InProcesses(text_)) {}

void TextFilter::AppendMatches(std::span<const eventlog::EventRecordPtr> records,
                               const SearchIndex& index, std::size_t first,
                               std::vector<std::uint32_t>& matches) {
    JudgeNewKinds(index);
    const std::span<const SearchKey> keys = index.Keys();
    for (std::size_t i = first; i < records.size(); ++i) {
        if (Matches(records[i], keys[i])) {
            matches.push_back(static_cast<std::uint32_t>(i));
        }
    }
}

void TextFilter::JudgeNewKinds(const SearchIndex& index) {
    for (const EventRecord* record : index.Kinds().subspan(matchesKind_.size())) {
        matchesKind_.push_back(MatchesProviderOrLevel(*record, text_) ? 1 : 0);
    }
}

// The record itself is only looked at when its digits do not fit the key.
bool TextFilter::Matches(const eventlog::EventRecordPtr& record, const SearchKey& key) const {
    if (matchesKind_[key.kind] != 0) {
        return true;
    }
    return (key.time == kNoTimeDigits ? ContainsFolded(record->timeText, text_)
                                      : inTime_.OccursIn(key.time)) ||
           (key.process == kNoProcessDigits ? ContainsFolded(record->processId, text_)
                                            : inProcess_.OccursIn(key.process));
}

}  // namespace tavrin::query
