#include "query/search_index.h"

#include <functional>
#include <string_view>

#include "eventlog/event_record.h"

namespace tavrin::query {

using eventlog::EventRecord;

void SearchIndex::Add(const EventRecord& record) {
    const auto [entry, isNew] = known_.try_emplace(&record, static_cast<Kind>(examples_.size()));
    if (isNew) {
        examples_.push_back(&record);
    }
    kinds_.push_back(entry->second);
    times_.push_back(PackTimeDigits(record.timeText));
}

void SearchIndex::Clear() {
    kinds_.clear();
    times_.clear();
    examples_.clear();
    known_.clear();
}

std::size_t SearchIndex::HashKind::operator()(const EventRecord* record) const {
    const std::hash<std::wstring_view> hash;
    return hash(record->providerName) * 31 + hash(record->processId) + record->level;
}

bool SearchIndex::SameKind::operator()(const EventRecord* a, const EventRecord* b) const {
    return a->level == b->level && a->processId == b->processId &&
           std::wstring_view(a->providerName) == b->providerName;
}

}  // namespace tavrin::query
