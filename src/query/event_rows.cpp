#include "query/event_rows.h"

#include <string>
#include <utility>

#include "base/chunked_list.h"
#include "eventlog/records/event_record.h"

namespace tavrin::query {
namespace {

// Of the kinds from `first` on. A kind is a provider at one level, so a known provider may be
// among them.
SourceSet ProvidersOf(const base::ChunkedList<eventlog::EventRecordPtr>& kinds, std::size_t first) {
    SourceSet names;
    for (std::size_t kind = first; kind < kinds.size(); ++kind) {
        names.emplace(kinds[kind]->providerName);
    }
    return names;
}

}  // namespace

eventlog::LoadedRecords EventRows::Clear() {
    knownKinds_ = 0;
    visible_.clear();
    filterCursor_ = 0;
    filter_ = TextFilter();
    return std::exchange(loaded_, {});
}

Batch EventRows::TakeBatch(eventlog::EventNode& node) {
    Batch batch;
    batch.more = eventlog::TakeRecords(node, loaded_);
    batch.providers = ProvidersOf(loaded_.index.kinds, knownKinds_);
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
