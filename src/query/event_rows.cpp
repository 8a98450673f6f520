#include "query/event_rows.h"

#include <iterator>
#include <span>
#include <string>
#include <utility>

#include "base/reserve_more.h"
#include "eventlog/records/event_record.h"

namespace tavrin::query {
namespace {

// A kind is a provider at one level, so a known provider may be among them.
SourceSet ProvidersOf(std::span<const eventlog::EventRecordPtr> kinds) {
    SourceSet names;
    for (const eventlog::EventRecordPtr& record : kinds) {
        names.emplace(record->providerName);
    }
    return names;
}

// Moves all records; on std::bad_alloc none.
void MoveAll(eventlog::EventRecordList& to, eventlog::EventRecordList& from) {
    if (to.empty()) {
        std::swap(to, from);  // a channel shown again brings all its records at once
        return;
    }
    base::ReserveMore(to, from.size());
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
    from.clear();
}

}  // namespace

eventlog::LoadedRecords EventRows::Clear() {
    handOff_.clear();
    knownKinds_ = 0;
    visible_.clear();
    filterCursor_ = 0;
    filter_ = TextFilter();
    return std::exchange(loaded_, {});
}

Batch EventRows::TakeBatch(eventlog::EventNode& node) {
    Batch batch;
    batch.more = eventlog::TakeRecords(node, handOff_, loaded_.index);
    batch.providers = ProvidersOf(std::span(loaded_.index.kinds).subspan(knownKinds_));
    MoveAll(loaded_.records, handOff_);
    knownKinds_ = loaded_.index.kinds.size();
    return batch;
}

void EventRows::AppendMatching(std::wstring_view filterText) {
    if (filterText != filter_.Text()) {
        filter_ = TextFilter(std::wstring(filterText));
    }
    filter_.AppendMatches(loaded_, filterCursor_, visible_);
}

void EventRows::Rebuild(std::wstring_view filterText) {
    visible_.clear();
    filterCursor_ = 0;
    AppendMatching(filterText);
}

const eventlog::EventRecord* EventRows::Row(std::int64_t row) const {
    if (row < 0 || row >= static_cast<std::int64_t>(visible_.size())) {
        return nullptr;
    }
    return loaded_.records[visible_[static_cast<std::size_t>(row)]].get();
}

}  // namespace tavrin::query
