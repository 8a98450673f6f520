#include "query/text_filter.h"

#include <utility>

#include "eventlog/event_record.h"
#include "query/text_match.h"

namespace tavrin::query {

using eventlog::EventRecordPtr;

TextFilter::TextFilter(std::wstring text)
    : text_(std::move(text)),
      inTime_(DigitSearch::InTimes(text_)),
      inProcess_(DigitSearch::InProcesses(text_)) {}

void TextFilter::AppendMatches(std::span<const EventRecordPtr> records,
                               const eventlog::SearchKeys& keys, std::size_t first,
                               std::vector<std::uint32_t>& matches) {
    JudgeNewKinds(keys.kinds);
    for (std::size_t i = first; i < records.size(); ++i) {
        if (Matches(records[i], keys.keys[i])) {
            matches.push_back(static_cast<std::uint32_t>(i));
        }
    }
}

void TextFilter::JudgeNewKinds(std::span<const EventRecordPtr> kinds) {
    for (const EventRecordPtr& record : kinds.subspan(matchesKind_.size())) {
        matchesKind_.push_back(MatchesProviderOrLevel(*record, text_) ? 1 : 0);
    }
}

// The record itself is only looked at when its digits do not fit the key.
bool TextFilter::Matches(const EventRecordPtr& record, const eventlog::SearchKey& key) const {
    if (matchesKind_[key.kind] != 0) {
        return true;
    }
    return (key.time == eventlog::kNoTimeDigits ? ContainsFolded(record->timeText, text_)
                                                : inTime_.OccursIn(key.time)) ||
           (key.process == eventlog::kNoProcessDigits ? ContainsFolded(record->processId, text_)
                                                      : inProcess_.OccursIn(key.process));
}

}  // namespace tavrin::query
