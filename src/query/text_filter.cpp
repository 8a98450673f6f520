#include "query/text_filter.h"

#include <algorithm>
#include <utility>

#include "base/reserve_more.h"
#include "eventlog/records/event_record.h"
#include "query/text_match.h"

namespace tavrin::query {

using eventlog::EventRecordPtr;
using eventlog::SearchKey;
using eventlog::SearchKeyPlace;

TextFilter::TextFilter(std::wstring text)
    : text_(std::move(text)),
      inTime_(DigitSearch::InTimes(text_)),
      inProcess_(DigitSearch::InProcesses(text_)) {}

void TextFilter::AppendMatches(const eventlog::LoadedRecords& loaded, std::size_t& cursor,
                               std::vector<std::uint32_t>& matches) {
    JudgeNewKinds(loaded.index.kinds);
    while (cursor < loaded.records.size()) {
        const SearchKeyPlace place = eventlog::PlaceOfKey(cursor);
        const std::size_t chunkEnd = cursor - place.offset + place.chunkSize;
        const std::size_t end = std::min(chunkEnd, loaded.records.size());
        base::ReserveMore(matches, end - cursor);
        const SearchKey* key = loaded.index.chunks[place.chunk].get() + place.offset;
        for (std::size_t record = cursor; record < end; ++record, ++key) {
            if (Matches(loaded.records[record], *key)) {
                matches.push_back(static_cast<std::uint32_t>(record));
            }
        }
        cursor = end;
    }
}

void TextFilter::JudgeNewKinds(std::span<const EventRecordPtr> kinds) {
    for (const EventRecordPtr& record : kinds.subspan(matchesKind_.size())) {
        matchesKind_.push_back(MatchesProviderOrLevel(*record, text_) ? 1 : 0);
    }
}

// Looks at the record itself only if its digits do not fit the key.
bool TextFilter::Matches(const EventRecordPtr& record, const SearchKey& key) const {
    if (matchesKind_[key.kind] != 0) {
        return true;
    }
    return (key.time == eventlog::kNoTimeDigits ? ContainsFolded(record->timeText, text_)
                                                : inTime_.OccursIn(key.time)) ||
           (key.process == eventlog::kNoProcessDigits ? ContainsFolded(record->processId, text_)
                                                      : inProcess_.OccursIn(key.process));
}

}  // namespace tavrin::query
