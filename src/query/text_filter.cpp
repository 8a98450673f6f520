#include "query/text_filter.h"

#include <span>
#include <utility>

#include "base/chunked_list.h"
#include "base/reserve_more.h"
#include "eventlog/records/event_record.h"
#include "query/text_match.h"

namespace tavrin::query {

using eventlog::EventRecord;
using eventlog::EventRecordPtr;
using eventlog::SearchKey;

TextFilter::TextFilter(std::wstring text)
    : text_(std::move(text)),
      inTime_(DigitSearch::InTimes(text_)),
      inProcess_(DigitSearch::InProcesses(text_)) {}

void TextFilter::AppendMatches(const eventlog::LoadedRecords& loaded, std::size_t& cursor,
                               std::vector<std::uint32_t>& matches) {
    JudgeNewKinds(loaded.index.kinds);
    while (cursor < loaded.records.size()) {
        const std::span keys = loaded.index.keys.ChunkFrom(cursor);
        const std::span records = loaded.records.ChunkFrom(cursor);
        base::ReserveMore(matches, records.size());
        for (std::size_t i = 0; i < records.size(); ++i) {
            if (Matches(records[i], keys[i])) {
                matches.push_back(static_cast<std::uint32_t>(cursor + i));
            }
        }
        cursor += records.size();
    }
}

void TextFilter::JudgeNewKinds(const base::ChunkedList<EventRecordPtr>& kinds) {
    while (matchesKind_.size() < kinds.size()) {
        const EventRecord& record = *kinds[matchesKind_.size()];
        matchesKind_.push_back(MatchesProviderOrLevel(record, text_) ? 1 : 0);
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
